#include "filters/frmFileFilter.h"

namespace hv {

namespace {
SingleListPageDesign Design() {
    return {"frmFileFilter",
            &rulelists::File(),
            QStringLiteral("File Filter - "),
            QStringLiteral("File Filter"),
            "chkEnableFileFilter",
            "frameFileFilter",
            "lblFileExtension",
            "txtFileExtension",
            "lvwFileFilter",
            "ilsFileFilter",
            QStringLiteral("Enable File Filter"),
            QStringLiteral("File Filter"),
            QStringLiteral("Enter File Extension(Eg: .zip,.exe):"),
            QStringLiteral("Click to enable or disable the File Filter"),
            QStringLiteral(
                "Type file extensions that are to be blocked from downloading (eg: .zip, .exe, .jpg, .bmp)"),
            QStringLiteral("Export Blocked Extensions to a text file"),
            QStringLiteral("Import Blocked Extensions from a text file")};
}
} // namespace

frmFileFilter::frmFileFilter()
    : SingleListPage(Design()), chkEnableFileFilter(chkEnable), frameFileFilter(frame),
      lblFileExtension(lblPrompt), txtFileExtension(txtRule), lvwFileFilter(lvwRules),
      ilsFileFilter(ilsPage) {
    connect(chkEnableFileFilter, &ui::CheckBox::Click, this, &frmFileFilter::chkEnableFileFilter_Click);
    connect(lvwFileFilter, &ui::ListView::AfterLabelEdit, this, &frmFileFilter::lvwFileFilter_AfterLabelEdit);
}

} // namespace hv
