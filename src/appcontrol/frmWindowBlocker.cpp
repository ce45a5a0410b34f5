#include "appcontrol/frmWindowBlocker.h"

namespace hv {

namespace {
SingleListPageDesign Design() {
    return {.formName = "frmWindowBlocker",
            .list = &rulelists::Window(),
            .captionPrefix = QStringLiteral("Window Blocker - "),
            .featureWords = QStringLiteral("Window Blocker"),
            .checkName = "chkEnableWindowBlocker",
            .frameName = "frameWindowBlocker",
            .labelName = "lblWindowTitle",
            .textName = "txtWindowBlocker",
            .listName = "lvwWindowBlocker",
            .imagesName = "ilsWindowBlocker",
            .checkCaption = QStringLiteral("Enable Window Blocker"),
            .frameCaption = QStringLiteral("Window Blocker"),
            .labelCaption = QStringLiteral("Enter Window Title (Eg: Calculator, Notepad):"),
            .checkToolTip = QStringLiteral("Click to enable or disable the Window Blocker"),
            .textToolTip = QStringLiteral("Provides a space for you to type Window Title"),
            .exportToolTip = QStringLiteral("Export Blocked Window Titles to a file"),
            .importToolTip = QStringLiteral("Import Blocked Window Titles from a file")};
}
} // namespace

frmWindowBlocker::frmWindowBlocker() : SingleListPage(Design()) {}

} // namespace hv
