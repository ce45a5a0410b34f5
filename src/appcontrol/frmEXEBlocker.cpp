#include "appcontrol/frmEXEBlocker.h"

#include "core/clsLog.h"
#include "platform/Err.h"
#include "store/modDB.h"
#include "store/modDBFunctions.h"
#include "ui/ExeBrowse.h"
#include "ui/Session.h"

#include <QApplication>
#include <QStyle>

namespace hv {

namespace {
SingleListPageDesign Design() {
    return {.formName = "frmEXEBlocker",
            .list = &rulelists::Exe(),
            .captionPrefix = QStringLiteral("EXE Blocker - "),
            .featureWords = QStringLiteral("EXE Blocker"),
            .checkName = "chkEnableEXEBlocker",
            .frameName = "frameEXEBlocker",
            .labelName = "lblEXEName",
            .textName = "txtEXEBlocker",
            .listName = "lvwEXEBlocker",
            .imagesName = "ilsEXEBlocker",
            .checkCaption = QStringLiteral("Enable EXE Blocker"),
            .frameCaption = QStringLiteral("EXE Blocker"),
            .labelCaption = QStringLiteral("Enter EXE Name(Eg: notepad.exe.mui):"),
            .checkToolTip = QStringLiteral("Click to enable or disable the EXE Blocker"),
            .textToolTip = QStringLiteral("Provides a space for you to type Blocked EXEs"),
            .exportToolTip = QStringLiteral("Export Blocked EXEs to a file"),
            .importToolTip = QStringLiteral("Import Blocked EXEs from a file")};
}
} // namespace

frmEXEBlocker::frmEXEBlocker() : SingleListPage(Design()) {
    cmdBrowseExe = new ui::CommandButton(QStringLiteral("cmdBrowseExe"), QString(), Page_Panel().frame);
    cmdBrowseExe->Set_Picture(QApplication::style()->standardIcon(QStyle::SP_DirOpenIcon));
    cmdBrowseExe->setToolTip(QStringLiteral("Browse for exe files"));
    Page_Panel().extraButtons->addWidget(cmdBrowseExe);

    connect(cmdBrowseExe, &ui::CommandButton::Click, this, &frmEXEBlocker::cmdBrowseExe_Click);
}

void frmEXEBlocker::Set_Controls_Enabled() {
    SingleListPage::Set_Controls_Enabled();
    Enable_Unless_Remote({cmdBrowseExe});
}

void frmEXEBlocker::cmdBrowseExe_Click() {
    StoreBatch batch([this] { Rules().Reload(); });
    try {
        ui::Browse_For_Exes(cmdlgMain, batch, *Rule_List(), [&](const QString& name) {
            const Subject subject = Current_Subject();
            if (Add_List_Item(batch.Handle(), batch.result, QStringLiteral("EXE_NAME"),
                              QStringLiteral("EXE_TBL"), name, subject.computerId, subject.userId))
                Rules().Add_Row(name);
        });
    } catch (const RunTimeFailure&) {
        Report_Error();
    }
}

} // namespace hv
