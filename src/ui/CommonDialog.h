#pragma once
// A file dialog that keeps its settings between uses, as the common dialog control on a page does: what
// the last use left in FileName is still there at the next. A Cancel leaves FileName as it was.
//
// After a multiple selection FileName holds the folder, a NUL, and the chosen names separated by NULs;
// after a single choice it holds the full path.
#include <QString>

namespace hv {

struct FileDialogAnswer;

// The first file a dialog's answer names, as a full path: a bare name lies in the answer's folder.
QString First_Chosen_Path(const FileDialogAnswer& answer);

class CommonDialog final {
public:
    static constexpr long cdlOFNAllowMultiselect = 0x200;
    static constexpr long cdlOFNExplorer = 0x80000;

    QString DialogTitle;
    QString FileName;
    QString Filter;
    long Flags = 0;
    long MaxFileSize = 260;
    // Never set by the pages: a Cancel is then no error and FileName is left alone.
    bool CancelError = false;

    void ShowOpen() { Show(false); }
    void ShowSave() { Show(true); }

private:
    void Show(bool save);
};

} // namespace hv
