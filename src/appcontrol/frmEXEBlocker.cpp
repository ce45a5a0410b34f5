#include "appcontrol/frmEXEBlocker.h"

#include "core/clsLog.h"
#include "platform/Err.h"
#include "platform/ProviderLibrary.h"
#include "store/modDB.h"
#include "store/modDBFunctions.h"
#include "ui/Session.h"

#include <QApplication>
#include <QStyle>
#include <memory>

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
        cmdlgMain.FileName = QString();
        cmdlgMain.DialogTitle = QStringLiteral("Browse for EXE files");
        cmdlgMain.Filter = QStringLiteral("Exe files|*.exe");
        cmdlgMain.Flags = CommonDialog::cdlOFNExplorer | CommonDialog::cdlOFNAllowMultiselect;
        cmdlgMain.MaxFileSize = 32767;
        cmdlgMain.ShowOpen();
        // The name was cleared, so a Cancel ends here.
        if (cmdlgMain.FileName.isEmpty())
            return;

        // One file: its full path. Several: the folder first, then the names.
        const QStringList parts = cmdlgMain.FileName.split(QChar(0));
        const int first = parts.size() > 1 ? 1 : 0;

        batch.Open();
        // Loaded at its first call, as a declared library is: a missing one fails here.
        std::unique_ptr<ProviderLibrary> provider;
        for (int i = first; i < parts.size(); ++i) {
            // The folder and the name are joined with this platform's separator; the library takes the
            // name after the last separator of either kind.
            const QString path = parts.size() > 1 ? parts[0] + u'/' + parts[i] : parts[i];
            QByteArray buffer = path.toLocal8Bit().left(ProviderLibrary::kNameBufferSize);
            if (!provider)
                provider = std::make_unique<ProviderLibrary>();
            provider->Get_Blocked_Exe_Name(buffer);
            if (buffer.indexOf('\0') < 0)
                Err().Raise(errnum::InvalidProcedureCall);
            const QString name = Text_Before_Nul(buffer);
            // A program already listed is passed over without a word.
            if (Is_Text_In_ListView(name, *Rule_List()))
                continue;
            const Subject subject = Current_Subject();
            if (!Add_List_Item(batch.Handle(), batch.result, QStringLiteral("EXE_NAME"),
                               QStringLiteral("EXE_TBL"), name, subject.computerId, subject.userId))
                continue;
            Rules().Add_Row(name);
        }
    } catch (const RunTimeFailure&) {
        Report_Error();
    }
}

} // namespace hv
