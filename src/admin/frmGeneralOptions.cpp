#include "admin/frmGeneralOptions.h"

#include "core/clsLog.h"
#include "core/modGlobal.h"
#include "platform/Platform.h"
#include "store/Bits.h"
#include "store/modCommonFuns.h"
#include "store/modDBFunctions.h"
#include "ui/Images.h"
#include "ui/PageSwitches.h"
#include "ui/Session.h"

#include <QApplication>
#include <QFrame>
#include <QGridLayout>
#include <QStyle>
#include <QVBoxLayout>

namespace hv {

namespace {
struct ClientOption {
    const char* key;
    const char* text;
};
const ClientOption kClientOptions[] = {
    {"c0", "Do not let Windows Administrators users to stop the client service."},
    {"c1", "Automatically run client sevice when computer starts up."},
    {"c2", "Enable filtering even if the client service is not running (for extra security)."},
};

struct TreeNode {
    const char* parent;
    const char* key;
    const char* text;
    const char* image;
};
const TreeNode kNodes[] = {
    {"", "r0", "General Options", "GeneralOptions"},
    {"r0", "n0", "Mode", "HVMode"},
    {"r0", "n1", "Password", "Password"},
};

constexpr int kClientListWidth = 5400;
constexpr int kClientListHeight = 1500;

void Set_Picture(ui::Label* picture, const char* image) {
    picture->Set_Picture(Console_Image(QLatin1String(image)));
}
} // namespace

long Client_Option_Bit(const QString& key) {
    return 1L << key.mid(1).toInt();
}

bool Is_Client_Option_Set(long options, long bit) {
    return (options & bit) > 0;
}

frmGeneralOptions::frmGeneralOptions() : ui::ApplyPage(QStringLiteral("frmGeneralOptions")) {
    tvwGenOptions = new ui::TreeView(QStringLiteral("tvwGenOptions"), this);
    tvwGenOptions->setFixedWidth(170);
    Build_Mode_Frame();
    Build_Password_Frame();
    Build_Client_Frame();
    Build_Remote_Frame();

    auto* frames = new QVBoxLayout;
    for (QGroupBox* frame : fraGeneralOptions)
        frames->addWidget(frame);
    frames->addStretch(1);
    auto* body = new QHBoxLayout;
    body->addWidget(tvwGenOptions);
    body->addLayout(frames, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(body, 1);
    layout->addLayout(Button_Row(true));

    connect(tvwGenOptions, &ui::TreeView::NodeClick, this,
            [this](const QString& key) { Guarded([&] { tvwGenOptions_NodeClick(key); }); });
    // The tree cannot fold: a collapsed node is opened again at once.
    connect(tvwGenOptions, &QTreeWidget::itemCollapsed, this,
            [](QTreeWidgetItem* node) { node->setExpanded(true); });
    connect(optComputer, &ui::OptionButton::Click, this, [this] { Mode_Click("AllUsers"); });
    connect(optUser, &ui::OptionButton::Click, this, [this] { Mode_Click("User"); });
    connect(optDisableRemoteMode, &ui::OptionButton::Click, this, [this] { Remote_Mode_Click(false); });
    connect(optEnableRemoteMode, &ui::OptionButton::Click, this, [this] { Remote_Mode_Click(true); });
    connect(lvwClientSettings, &ui::ListView::ItemCheck, this, [this](int) { Mark_Changed(); });
    // A change of the confirmation alone is no change to save.
    for (ui::TextBox* box : {txtNewPassword, txtServerName, txtClientPortNo})
        connect(box, &ui::TextBox::Change, this, [this] { Mark_Changed(); });
    ui::Set_KeyPress(txtNewPassword, [this](int& KeyAscii) { txtNewPassword_KeyPress(KeyAscii); });
    ui::Set_KeyPress(txtConfirmPassword, [this](int& KeyAscii) { txtConfirmPassword_KeyPress(KeyAscii); });
    ui::Set_KeyPress(txtClientPortNo, [this](int& KeyAscii) { txtClientPortNo_KeyPress(KeyAscii); });
}

QGroupBox* frmGeneralOptions::Build_Frame(int index, const QString& caption) {
    auto* frame = new QGroupBox(caption, this);
    frame->setObjectName(ui::Array_Name(QStringLiteral("fraGeneralOptions"), index));
    fraGeneralOptions[size_t(index)] = frame;
    return frame;
}

void frmGeneralOptions::Build_Mode_Frame() {
    QGroupBox* frame = Build_Frame(0, QStringLiteral("Change Mode"));
    auto* container = new QFrame(frame);
    container->setObjectName(QStringLiteral("picChangeModeContainer"));
    picMode = new ui::Label(QStringLiteral("picMode"), QString(), container);
    optComputer =
        new ui::OptionButton(QStringLiteral("optComputer"), QStringLiteral("All User Mode"), container);
    optComputer->setToolTip(QStringLiteral("Settings will be applied for all users in the computer."));
    optUser =
        new ui::OptionButton(QStringLiteral("optUser"), QStringLiteral("Individual User Mode"), container);
    optUser->setToolTip(QStringLiteral("Individually apply settings for users in the computer."));
    auto* options = new QVBoxLayout;
    options->addWidget(optComputer);
    options->addWidget(optUser);
    auto* row = new QHBoxLayout(container);
    row->addWidget(picMode);
    row->addLayout(options, 1);
    (new QVBoxLayout(frame))->addWidget(container);
}

void frmGeneralOptions::Build_Password_Frame() {
    QGroupBox* frame = Build_Frame(1, QStringLiteral("Change Password"));
    picPassword = new ui::Label(QStringLiteral("picPassword"), QString(), frame);
    txtNewPassword = new ui::TextBox(QStringLiteral("txtNewPassword"), frame);
    txtConfirmPassword = new ui::TextBox(QStringLiteral("txtConfirmPassword"), frame);
    auto* grid = new QGridLayout(frame);
    grid->addWidget(picPassword, 0, 0, 2, 1);
    grid->addWidget(new ui::Label(QStringLiteral("lblNewPassword"), QStringLiteral("New Password:"), frame),
                    0, 1);
    grid->addWidget(txtNewPassword, 0, 2);
    grid->addWidget(
        new ui::Label(QStringLiteral("lblConfirmPassword"), QStringLiteral("Confirm Password:"), frame), 1,
        1);
    grid->addWidget(txtConfirmPassword, 1, 2);
}

void frmGeneralOptions::Build_Client_Frame() {
    QGroupBox* frame = Build_Frame(2, QStringLiteral("Client Settings"));
    lvwClientSettings = new ui::ListView(QStringLiteral("lvwClientSettings"), ui::ListView::Report, frame);
    lvwClientSettings->Set_Size_Twips(kClientListWidth, kClientListHeight);
    lvwClientSettings->Set_Checkboxes(true);
    lvwClientSettings->Add_Column(QStringLiteral("Client Security and General Options"), kClientListWidth);
    auto* images = new ui::ImageList(QStringLiteral("ilsGenOptions"), this);
    images->Add(QStringLiteral("Client"), QApplication::style()->standardIcon(QStyle::SP_ComputerIcon));
    lvwClientSettings->Set_Small_Icons(images);
    (new QVBoxLayout(frame))->addWidget(lvwClientSettings);
}

void frmGeneralOptions::Build_Remote_Frame() {
    QGroupBox* frame = Build_Frame(3, QStringLiteral("Remote Mode"));
    auto* container = new QFrame(frame);
    container->setObjectName(QStringLiteral("picContainerRemoteMode"));
    picRemoteMode = new ui::Label(QStringLiteral("picRemoteMode"), QString(), container);

    auto* fraRemoteMode = new QGroupBox(QStringLiteral("Enable Remote Mode"), container);
    fraRemoteMode->setObjectName(QStringLiteral("fraRemoteMode"));
    optDisableRemoteMode = new ui::OptionButton(QStringLiteral("optDisableRemoteMode"),
                                                QStringLiteral("Disable Remote Mode"), fraRemoteMode);
    optEnableRemoteMode = new ui::OptionButton(QStringLiteral("optEnableRemoteMode"),
                                               QStringLiteral("Enable Remote Mode"), fraRemoteMode);
    auto* modes = new QVBoxLayout(fraRemoteMode);
    modes->addWidget(optDisableRemoteMode);
    modes->addWidget(optEnableRemoteMode);

    auto* fraRemoteSettings = new QGroupBox(QStringLiteral("Remote Settings"), container);
    fraRemoteSettings->setObjectName(QStringLiteral("fraRemoteSettings"));
    txtServerName = new ui::TextBox(QStringLiteral("txtServerName"), fraRemoteSettings);
    txtClientPortNo = new ui::TextBox(QStringLiteral("txtClientPortNo"), fraRemoteSettings);
    txtClientPortNo->Set_Max_Length(5);
    auto* grid = new QGridLayout(fraRemoteSettings);
    grid->addWidget(
        new ui::Label(QStringLiteral("lblServerName"), QStringLiteral("Server Name:"), fraRemoteSettings), 0,
        0);
    grid->addWidget(txtServerName, 0, 1);
    grid->addWidget(
        new ui::Label(QStringLiteral("lblClientPortNo"), QStringLiteral("Client Port:"), fraRemoteSettings),
        1, 0);
    grid->addWidget(txtClientPortNo, 1, 1);

    auto* column = new QVBoxLayout(container);
    column->addWidget(picRemoteMode);
    column->addWidget(fraRemoteMode);
    column->addWidget(fraRemoteSettings);
    (new QVBoxLayout(frame))->addWidget(container);
}

void frmGeneralOptions::Form_Load() {
    Guarded([this] {
        Set_Caption(QStringLiteral("General Options - ") + Current_User_Text());
        Set_Picture(picPassword, "Password");
        for (const TreeNode& n : kNodes) {
            QTreeWidgetItem* node =
                tvwGenOptions->Add_Node(QLatin1String(n.parent), QLatin1String(n.key), QLatin1String(n.text));
            node->setIcon(0, Console_Image(QLatin1String(n.image)));
        }
        tvwGenOptions->Node(QStringLiteral("r0"))->setExpanded(true);
        for (const ClientOption& o : kClientOptions)
            lvwClientSettings->Add(QLatin1String(o.text), QStringLiteral("Client"), QLatin1String(o.key));
        lvwClientSettings->Set_Column_Width(1, lvwClientSettings->Width_Twips() - 100);
        tvwGenOptions->Click_Node(QStringLiteral("n0"));
        Show_Program_Mode();
        Show_Client_Options();
        Show_Remote_Settings();
        Set_Controls_Enabled();
        txtNewPassword->Set_Password_Char(ui::kPasswordBullet);
        txtConfirmPassword->Set_Password_Char(ui::kPasswordBullet);
        // Last: loading raised the handlers that enable it.
        cmdApply->setEnabled(false);
    });
}

void frmGeneralOptions::Show_Options_Frame(int index) {
    for (QGroupBox* frame : fraGeneralOptions)
        frame->setVisible(false);
    fraGeneralOptions.at(size_t(index))->setVisible(true);
}

void frmGeneralOptions::Show_Client_Options() {
    Get_Client_Options(m_lngClientOptions);
    for (int i = 1; i <= lvwClientSettings->Count(); ++i)
        lvwClientSettings->Set_Checked(
            i, Is_Client_Option_Set(m_lngClientOptions, Client_Option_Bit(lvwClientSettings->Key(i))));
}

void frmGeneralOptions::Read_Client_Options() {
    for (int i = 1; i <= lvwClientSettings->Count(); ++i)
        Apply_Bit(m_lngClientOptions, Client_Option_Bit(lvwClientSettings->Key(i)),
                  lvwClientSettings->Checked(i));
}

void frmGeneralOptions::Show_Program_Mode() {
    long mode = 0;
    if (!Get_Program_Mode(mode))
        return;
    if (mode == 0) {
        optComputer->Set_Value(true);
        Set_Picture(picMode, "AllUsers");
    } else {
        optUser->Set_Value(true);
        Set_Picture(picMode, "User");
    }
}

void frmGeneralOptions::Show_Remote_Settings() {
    long mode = 0;
    QString server;
    long port = 0;
    if (!Get_Remote_Settings(mode, server, port))
        return;
    Remote_Mode = mode != 0;
    if (mode != 0) {
        optEnableRemoteMode->Set_Value(true);
        Set_Picture(picRemoteMode, "RemoteMode");
    } else {
        optDisableRemoteMode->Set_Value(true);
        Set_Picture(picRemoteMode, "LocalMode");
    }
    txtServerName->Set_Text(server);
    txtClientPortNo->Set_Text(QString::number(port));
}

// The password boxes and Apply stay as they are in either mode.
void frmGeneralOptions::Set_Controls_Enabled() {
    ui::Enable_Unless_Remote({optComputer, optUser, lvwClientSettings});
    txtServerName->setEnabled(Remote_Mode);
    txtClientPortNo->setEnabled(Remote_Mode);
}

void frmGeneralOptions::tvwGenOptions_NodeClick(const QString& key) {
    Show_Options_Frame(int(Text_To_Long(key.mid(1))));
}

void frmGeneralOptions::Mode_Click(const char* picture) {
    Set_Picture(picMode, picture);
    Mark_Changed();
}

void frmGeneralOptions::Remote_Mode_Click(bool remote) {
    Set_Picture(picRemoteMode, remote ? "RemoteMode" : "LocalMode");
    txtServerName->setEnabled(remote);
    txtClientPortNo->setEnabled(remote);
    Mark_Changed();
}

void frmGeneralOptions::txtNewPassword_KeyPress(int& KeyAscii) {
    if (KeyAscii == 13) {
        KeyAscii = 0;
        ui::Set_Focus(txtConfirmPassword);
    }
}

// Enter goes to Apply without pressing it.
void frmGeneralOptions::txtConfirmPassword_KeyPress(int& KeyAscii) {
    if (KeyAscii == 13 && cmdApply->isEnabled()) {
        KeyAscii = 0;
        ui::Set_Focus(cmdApply);
    }
}

// The signs among the keys that pass can never make a valid port; they pass all the same, and a text
// that holds one is no number when Apply reads it.
void frmGeneralOptions::txtClientPortNo_KeyPress(int& KeyAscii) {
    if (KeyAscii == 13) {
        KeyAscii = 0;
        Guarded([this] { cmdApply_Click(); });
        return;
    }
    const bool passes = (KeyAscii >= '0' && KeyAscii <= '9') || KeyAscii == 8 ||
                        QByteArrayView(".%'-$#").contains(char(KeyAscii));
    if (!passes)
        KeyAscii = 0;
}

void frmGeneralOptions::Select_All_In(ui::TextBox* box) {
    ui::Set_Focus(box);
    box->selectAll();
}

void frmGeneralOptions::cmdApply_Click() {
    if (MsgBox(QStringLiteral("Are you sure you want to change the Settings?"), MsgStyle::Question,
               MsgButtons::YesNo) != MsgAnswer::Yes)
        return;
    const QString newPassword = txtNewPassword->Text();
    const QString confirmPassword = txtConfirmPassword->Text();
    bool changed = false;

    Read_Client_Options();
    // The mode is written on every Apply, changed or not.
    const long mode = optUser->Value() ? 1 : 0;
    if (Set_Program_Mode(mode))
        changed = true;
    if (Set_Client_Options(m_lngClientOptions))
        changed = true;

    // An empty new password keeps the old one; the confirmation is then not looked at. The password is
    // taken as typed, blanks and all.
    if (!newPassword.isEmpty()) {
        QString refusal;
        if (!Is_Valid_Password(newPassword))
            refusal = QStringLiteral("Please enter a valid Password!.");
        else if (confirmPassword != newPassword)
            refusal = QStringLiteral("Password mismatch. Retype the Password!.");
        if (!refusal.isEmpty()) {
            MsgBox(refusal, MsgStyle::Exclamation);
            txtNewPassword->Set_Text(QString());
            txtConfirmPassword->Set_Text(QString());
            ui::Set_Focus(txtNewPassword);
            return;
        }
        if (Set_Password(newPassword)) {
            changed = true;
            txtNewPassword->Set_Text(QString());
            txtConfirmPassword->Set_Text(QString());
        }
    }

    const long remote = optEnableRemoteMode->Value() ? 1 : 0;
    // Tested whatever the remote value, although no node leads to the box.
    const QString server = Trim_Blanks(txtServerName->Text());
    if (!Is_Valid_Server_Name(server)) {
        MsgBox(QStringLiteral("Please enter a valid Server Name!."), MsgStyle::Exclamation);
        Select_All_In(txtServerName);
        return;
    }
    // A text that is no number raises here and ends Apply through its error target.
    if (!Is_Valid_Port(Text_To_Long(txtClientPortNo->Text()))) {
        MsgBox(QStringLiteral("Please enter a valid Port Number!."), MsgStyle::Exclamation);
        Select_All_In(txtClientPortNo);
        return;
    }
    if (Set_Remote_Settings(remote, server, txtClientPortNo->Text())) {
        Remote_Mode = remote != 0;
        Set_Controls_Enabled();
    }
    session().Get_Working_Mode();
    if (changed)
        Saved(QStringLiteral("Successfully saved the changes."));
}

} // namespace hv
