#include "filters/frmFileFilter.h"

namespace hv {

namespace {
SingleListPageDesign Design() {
    return {.formName = "frmFileFilter",
            .list = &rulelists::File(),
            .captionPrefix = QStringLiteral("File Filter - "),
            .featureWords = QStringLiteral("File Filter"),
            .checkName = "chkEnableFileFilter",
            .frameName = "frameFileFilter",
            .labelName = "lblFileExtension",
            .textName = "txtFileExtension",
            .listName = "lvwFileFilter",
            .imagesName = "ilsFileFilter",
            .checkCaption = QStringLiteral("Enable File Filter"),
            .frameCaption = QStringLiteral("File Filter"),
            .labelCaption = QStringLiteral("Enter File Extension(Eg: .zip,.exe):"),
            .checkToolTip = QStringLiteral("Click to enable or disable the File Filter"),
            .textToolTip = QStringLiteral(
                "Type file extensions that are to be blocked from downloading (eg: .zip, .exe, .jpg, .bmp)"),
            .exportToolTip = QStringLiteral("Export Blocked Extensions to a text file"),
            .importToolTip = QStringLiteral("Import Blocked Extensions from a text file")};
}
} // namespace

frmFileFilter::frmFileFilter() : SingleListPage(Design()) {}

} // namespace hv
