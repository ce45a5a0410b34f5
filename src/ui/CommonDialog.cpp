#include "ui/CommonDialog.h"

#include "platform/Platform.h"

#include <QDir>

namespace hv {

QString First_Chosen_Path(const FileDialogAnswer& answer) {
    const QString& file = answer.files.front();
    return answer.directory.isEmpty() || QDir::isAbsolutePath(file) ? file
                                                                    : QDir(answer.directory).filePath(file);
}

void CommonDialog::Show(bool save) {
    FileDialogRequest request;
    request.save = save;
    request.title = DialogTitle;
    request.filter = Filter;
    request.fileName = FileName;
    request.multiSelect = (Flags & cdlOFNAllowMultiselect) != 0;
    const FileDialogAnswer answer = platform().FileDialog(request);
    if (answer.cancelled || answer.files.isEmpty())
        return;
    if (answer.files.size() == 1) {
        FileName = First_Chosen_Path(answer);
        return;
    }
    FileName = answer.directory + QChar(0) + answer.files.join(QChar(0));
}

} // namespace hv
