#include "appcontrol/frmWindowBlocker.h"

namespace hv {

namespace {
SingleListPageDesign Design() {
    return {"frmWindowBlocker",
            &rulelists::Window(),
            QStringLiteral("Window Blocker - "),
            QStringLiteral("Window Blocker"),
            "chkEnableWindowBlocker",
            "frameWindowBlocker",
            "lblWindowTitle",
            "txtWindowBlocker",
            "lvwWindowBlocker",
            "ilsWindowBlocker",
            QStringLiteral("Enable Window Blocker"),
            QStringLiteral("Window Blocker"),
            QStringLiteral("Enter Window Title (Eg: Calculator, Notepad):"),
            QStringLiteral("Click to enable or disable the Window Blocker"),
            QStringLiteral("Provides a space for you to type Window Title"),
            QStringLiteral("Export Blocked Window Titles to a file"),
            QStringLiteral("Import Blocked Window Titles from a file")};
}
} // namespace

frmWindowBlocker::frmWindowBlocker()
    : SingleListPage(Design()), chkEnableWindowBlocker(chkEnable), frameWindowBlocker(frame),
      lblWindowTitle(lblPrompt), txtWindowBlocker(txtRule), lvwWindowBlocker(lvwRules),
      ilsWindowBlocker(ilsPage) {
    connect(chkEnableWindowBlocker, &ui::CheckBox::Click, this,
            &frmWindowBlocker::chkEnableWindowBlocker_Click);
    connect(lvwWindowBlocker, &ui::ListView::AfterLabelEdit, this,
            &frmWindowBlocker::lvwWindowBlocker_AfterLabelEdit);
}

} // namespace hv
