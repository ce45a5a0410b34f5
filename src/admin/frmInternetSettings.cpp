#include "admin/frmInternetSettings.h"
#include "admin/model/AdminWords.h"

#include "core/clsLog.h"
#include "core/modGlobal.h"
#include "platform/Err.h"
#include "platform/Platform.h"
#include "store/modCommonFuns.h"
#include "store/modDB.h"
#include "store/modDBFunctions.h"
#include "ui/ExeBrowse.h"
#include "ui/PageSwitches.h"
#include "ui/Session.h"

#include <QApplication>
#include <QFrame>
#include <QGridLayout>
#include <QGroupBox>
#include <QStyle>
#include <QVBoxLayout>

namespace hv {

namespace {
const char* const kWindowTypes[] = {"Do not show any messages (block silently)", "Browser Window",
                                    "Message Box", "Redirect URL"};
constexpr int kRedirectType = 3;
constexpr int kListWidth = 5175;
constexpr int kListHeight = 2415;
const QString kBypassIcon = QStringLiteral("BypassedExe");
} // namespace

frmInternetSettings::frmInternetSettings() : ui::ApplyPage(QStringLiteral("frmInternetSettings")) {
    auto* frame = new QGroupBox(QStringLiteral("Internet Settings"), this);
    frame->setObjectName(QStringLiteral("frameInternetSettings"));
    auto* container = new QFrame(frame);
    container->setObjectName(QStringLiteral("picContainerInternetSettings"));
    (new QVBoxLayout(frame))->addWidget(container);

    auto* lblWindowType = new ui::Label(QStringLiteral("lblWindowType"),
                                        QStringLiteral("Show Blocked Messages in:"), container);
    cboWindowType = new ui::ComboBox(QStringLiteral("cboWindowType"), ui::ComboBox::DropDownList, container);
    lblMessage =
        new ui::Label(QStringLiteral("lblMessage"), QStringLiteral("Blocked Internet Message:"), container);
    txtBlMessage = new ui::TextBox(QStringLiteral("txtBlMessage"), container);
    txtBlMessage->Set_Multi_Line(true);
    lblRedirectUrl =
        new ui::Label(QStringLiteral("lblRedirectUrl"), QStringLiteral("Redirect Url"), container);
    txtRedirectUrl = new ui::TextBox(QStringLiteral("txtRedirectUrl"), container);
    auto* lblBypassExe = new ui::Label(
        QStringLiteral("lblBypassExe"),
        QStringLiteral("Always allow Internet access to the following listed applications"), container);
    auto* lblExe = new ui::Label(QStringLiteral("lblExe"),
                                 QStringLiteral("Enter EXE name (eg. AdobeUpdateManager.exe):"), container);
    txtByPassedExe = new ui::TextBox(QStringLiteral("txtByPassedExe"), container);
    cmdAdd = new ui::CommandButton(QStringLiteral("cmdAdd"), QStringLiteral("Add"), container);
    cmdBrowseExe = new ui::CommandButton(QStringLiteral("cmdBrowseExe"), QString(), container);
    cmdBrowseExe->Set_Picture(QApplication::style()->standardIcon(QStyle::SP_DirOpenIcon));
    cmdRemove = new ui::CommandButton(QStringLiteral("cmdRemove"), QStringLiteral("Remove"), container);
    lvwBypassedExe = ui::Make_One_Column_List(QStringLiteral("lvwBypassedExe"), QStringLiteral("EXE Name"),
                                              kListWidth, kListHeight, container);
    lvwBypassedExe->Set_Multi_Select(true);
    auto* images = new ui::ImageList(QStringLiteral("ilsInternetSettings"), this);
    images->Add(kBypassIcon, QApplication::style()->standardIcon(QStyle::SP_FileIcon));
    lvwBypassedExe->Set_Small_Icons(images);

    auto* grid = new QGridLayout(container);
    grid->addWidget(lblWindowType, 0, 0);
    grid->addWidget(cboWindowType, 0, 1, 1, 3);
    grid->addWidget(lblMessage, 1, 0);
    grid->addWidget(txtBlMessage, 1, 1, 1, 3);
    grid->addWidget(lblRedirectUrl, 2, 0);
    grid->addWidget(txtRedirectUrl, 2, 1, 1, 3);
    grid->addWidget(lblBypassExe, 3, 0, 1, 4);
    grid->addWidget(lblExe, 4, 0);
    grid->addWidget(txtByPassedExe, 4, 1);
    grid->addWidget(cmdBrowseExe, 4, 2);
    grid->addWidget(cmdAdd, 4, 3);
    grid->addWidget(lvwBypassedExe, 5, 0, 1, 3);
    grid->addWidget(cmdRemove, 5, 3, Qt::AlignTop);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(frame);
    layout->addLayout(Button_Row(true));

    connect(cboWindowType, &ui::ComboBox::Click, this,
            [this] { Guarded([this] { cboWindowType_Click(); }); });
    connect(txtBlMessage, &ui::TextBox::Change, this, [this] { Mark_Changed(); });
    connect(txtRedirectUrl, &ui::TextBox::Change, this, [this] { Mark_Changed(); });
    connect(cmdAdd, &ui::CommandButton::Click, this, [this] { Guarded([this] { cmdAdd_Click(); }); });
    connect(cmdBrowseExe, &ui::CommandButton::Click, this,
            [this] { Guarded([this] { cmdBrowseExe_Click(); }); });
    connect(cmdRemove, &ui::CommandButton::Click, this, [this] { Guarded([this] { cmdRemove_Click(); }); });
    ui::Set_KeyPress(txtByPassedExe, [this](int& KeyAscii) {
        if (KeyAscii == 13) {
            KeyAscii = 0;
            Guarded([this] { cmdAdd_Click(); });
        }
    });
}

void frmInternetSettings::Form_Load() {
    Guarded([this] {
        m_intScrollRows = 8;
        Set_Caption(QStringLiteral("Internet Settings - ") + Current_User_Text());
        ColumnAllowance::Fill_Width(lvwBypassedExe);
        Set_Tool_Tips();
        for (const char* type : kWindowTypes)
            cboWindowType->Add_Item(QLatin1String(type));
        Load_Message_Settings();
        Load_Bypass_List();
        Set_Controls_Enabled();
        // Last: loading raised the handlers that enable it.
        cmdApply->setEnabled(false);
    });
}

void frmInternetSettings::Set_Tool_Tips() {
    cboWindowType->setToolTip(QStringLiteral("Select an option to show Blocked Internet Message"));
    txtBlMessage->setToolTip(QStringLiteral("Provides a space for you to type Blocked Internet Message"));
    txtRedirectUrl->setToolTip(QStringLiteral("Provides a space for you to type Redirect URL (a) Prefix "
                                              "'http://' to the URL (b) Add redirect url to "
                                              "whitelist"));
    txtByPassedExe->setToolTip(QStringLiteral("Provides a space for you to type Bypassed EXE Name"));
    cmdBrowseExe->setToolTip(QStringLiteral("Browse for applications"));
}

void frmInternetSettings::Load_Message_Settings() {
    const Subject subject = Current_Subject();
    long type = 0;
    QString message;
    QString redirect;
    if (!Get_Url_Message(subject.computerId, subject.userId, type, message, redirect))
        return;
    txtBlMessage->Set_Text(message);
    // Only offered: an untouched box is saved as this text.
    txtRedirectUrl->Set_Text(redirect.isEmpty() ? QStringLiteral("http://") : redirect);
    if (type >= 0 && type <= kRedirectType)
        cboWindowType->Set_ListIndex(int(type));
}

void frmInternetSettings::Load_Bypass_List() {
    const Subject subject = Current_Subject();
    ResultTable table;
    if (!Get_Bypass_Exes(subject.computerId, subject.userId, table))
        return;
    for (int i = 1; i <= table.Rows(); ++i)
        lvwBypassedExe->Add(table.Text(i, 0), kBypassIcon);
    if (lvwBypassedExe->Count() == m_intScrollRows)
        ColumnAllowance::Give_Room(lvwBypassedExe);
}

void frmInternetSettings::Set_Controls_Enabled() {
    ui::Enable_Unless_Remote({cmdAdd, cmdRemove, cmdApply, cmdBrowseExe, txtBlMessage, txtByPassedExe,
                              txtRedirectUrl, cboWindowType});
}

// The hidden box keeps its text, and Apply saves it too.
void frmInternetSettings::cboWindowType_Click() {
    const int type = cboWindowType->ListIndex();
    const bool message = type == 1 || type == 2;
    const bool redirect = type == kRedirectType;
    lblMessage->setVisible(message);
    txtBlMessage->setVisible(message);
    lblRedirectUrl->setVisible(redirect);
    txtRedirectUrl->setVisible(redirect);
    Mark_Changed();
}

void frmInternetSettings::cmdApply_Click() {
    const QString message = Trim_Blanks(txtBlMessage->Text());
    const QString redirect = Trim_Blanks(txtRedirectUrl->Text());
    const long type = cboWindowType->ListIndex();
    const Subject subject = Current_Subject();
    if (Set_Url_Message(subject.computerId, subject.userId, type, message, redirect))
        Saved(QStringLiteral("Successfully saved the changes"));
}

bool frmInternetSettings::Add_Bypass(StoreBatch& batch, const QString& exe) {
    const Subject subject = Current_Subject();
    if (!Add_Bypass_Exe(batch.Handle(), batch.result, subject.computerId, subject.userId, exe))
        return false;
    lvwBypassedExe->Add(exe, kBypassIcon);
    if (lvwBypassedExe->Count() == m_intScrollRows)
        ColumnAllowance::Give_Room(lvwBypassedExe);
    return true;
}

void frmInternetSettings::Reload_Bypass_List() {
    lvwBypassedExe->Clear();
    ColumnAllowance::Fill_Width(lvwBypassedExe);
    Load_Bypass_List();
}

void frmInternetSettings::End_Batch(StoreBatch& batch, bool failed) {
    // A failed commit has reloaded the list through the batch already.
    if (batch.Close() && failed)
        Reload_Bypass_List();
}

void frmInternetSettings::cmdAdd_Click() {
    const QString exe = Trim_Blanks(txtByPassedExe->Text());
    // The check passes every text, an empty one too.
    if (!Is_Valid_Window_Title(exe)) {
        MsgBox(QLatin1String(kInvalidExe), MsgStyle::Exclamation);
        return;
    }
    if (Is_Text_In_ListView(exe, *lvwBypassedExe)) {
        MsgBox(QLatin1String(kExeExists), MsgStyle::Exclamation);
        ui::Set_Focus(txtByPassedExe);
        txtByPassedExe->selectAll();
        return;
    }
    StoreBatch batch([this] { Reload_Bypass_List(); });
    batch.Open();
    const bool added = Add_Bypass(batch, exe);
    if (added) {
        ui::Set_Focus(txtByPassedExe);
        txtByPassedExe->Set_Text(QString());
    }
    End_Batch(batch, !added);
}

void frmInternetSettings::cmdBrowseExe_Click() {
    StoreBatch batch([this] { Reload_Bypass_List(); });
    bool failed = false;
    try {
        ui::Browse_For_Exes(cmnDialogBrowse, batch, *lvwBypassedExe, [&](const QString& name) {
            if (!Add_Bypass(batch, name))
                failed = true;
        });
    } catch (const RunTimeFailure&) {
        Report_Error();
    }
    End_Batch(batch, failed);
}

void frmInternetSettings::cmdRemove_Click() {
    // Asked also when nothing is selected.
    if (MsgBox(QStringLiteral("Are you sure you want to delete the selected Exe(s)?"), MsgStyle::Question,
               MsgButtons::YesNo) != MsgAnswer::Yes)
        return;
    StoreBatch batch([this] { Reload_Bypass_List(); });
    batch.Open();
    bool failed = false;
    const Subject subject = Current_Subject();
    for (int i = lvwBypassedExe->Count(); i >= 1; --i) {
        if (!lvwBypassedExe->Selected(i))
            continue;
        if (!Remove_Bypass_Exe(batch.Handle(), batch.result, subject.computerId, subject.userId,
                               lvwBypassedExe->Text(i))) {
            failed = true;
            continue;
        }
        if (lvwBypassedExe->Count() == m_intScrollRows)
            ColumnAllowance::Take_Room_Back(lvwBypassedExe);
        lvwBypassedExe->Remove(i);
    }
    End_Batch(batch, failed);
}

} // namespace hv
