#include "console/frmLogin.h"

#include "console/frmMain.h"
#include "console/modProgram.h"
#include "platform/Platform.h"
#include "store/modDB.h"
#include "store/modDBFunctions.h"
#include "ui/Forms.h"
#include "ui/WebLink.h"

#include <QApplication>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QStyle>
#include <QVBoxLayout>

namespace hv {

namespace {

constexpr int kEnter = 13;
constexpr int kEscape = 27;
QIcon Login_Picture() {
    const QIcon own = Console_Image(QStringLiteral("login"));
    if (!own.isNull())
        return own;
    return QApplication::style()->standardIcon(QStyle::SP_MessageBoxInformation);
}

} // namespace

frmLogin::frmLogin() : ui::Form(QStringLiteral("frmLogin")) {
    Set_Caption(QStringLiteral("Login - HalvenorTS"));
    setWindowIcon(Console_Image(QStringLiteral("Logo")));

    pictLogin = new ui::Label(QStringLiteral("pictLogin"), QString(), this);
    pictLogin->Set_Picture(Login_Picture(), 64);
    pictLogin->setAlignment(Qt::AlignTop | Qt::AlignHCenter);

    FrameLogin = new QGroupBox(QStringLiteral("Login"), this);
    FrameLogin->setObjectName(QStringLiteral("FrameLogin"));
    lblPassword = new ui::Label(QStringLiteral("lblPassword"), QStringLiteral("Password:"), FrameLogin);
    txtPassword = new ui::TextBox(QStringLiteral("txtPassword"), FrameLogin);
    txtPassword->setToolTip(QStringLiteral("Default password is 'Watchman' without quotes."));
    txtPassword->setMinimumWidth(220);
    lblPassword->setBuddy(txtPassword);
    auto* frameLayout = new QHBoxLayout(FrameLogin);
    frameLayout->addWidget(lblPassword);
    frameLayout->addWidget(txtPassword, 1);

    cmdLogin = new ui::CommandButton(QStringLiteral("cmdLogin"), QStringLiteral("Login"), this);
    cmdClose = new ui::CommandButton(QStringLiteral("cmdClose"), QStringLiteral("Close"), this);
    cmdLogin->setDefault(false);
    cmdLogin->setAutoDefault(false);
    cmdClose->setAutoDefault(false);

    lblHomeSite = ui::Home_Site_Label(this);

    auto* top = new QHBoxLayout;
    top->addWidget(pictLogin);
    top->addWidget(FrameLogin, 1);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(lblHomeSite);
    bottom->addStretch(1);
    bottom->addWidget(cmdLogin);
    bottom->addWidget(cmdClose);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(16, 16, 16, 12);
    layout->setSpacing(12);
    layout->addLayout(top);
    layout->addLayout(bottom);
    setFixedSize(sizeHint());

    connect(cmdLogin, &ui::CommandButton::Click, this, &frmLogin::cmdLogin_Click);
    connect(cmdClose, &ui::CommandButton::Click, this, &frmLogin::cmdClose_Click);
    connect(lblHomeSite, &ui::Label::Click, this, &frmLogin::lblHomeSite_Click);
    ui::Set_KeyPress(txtPassword, [this](int& KeyAscii) { txtPassword_KeyPress(KeyAscii); });
}

void frmLogin::Form_Load() {
    // The store is compacted at each start of the login form, before the user can type; a failure has
    // been reported and the form still comes up.
    Compact_Database();
    txtPassword->Set_Password_Char(ui::kPasswordBullet);
}

void frmLogin::cmdLogin_Click() {
    // Exactly as typed: the store's own comparison tells the case apart.
    if (Check_Password(txtPassword->Text())) {
        m_blnSuccess = true;
        cmdClose_Click();
        ui::Forms::Get<frmMain>().Show_Modeless();
        return;
    }
    MsgBox(QStringLiteral("Please enter a valid Password!"), MsgStyle::Exclamation);
    txtPassword->Set_Text(QString());
    ui::Set_Focus(txtPassword);
}

void frmLogin::cmdClose_Click() {
    Unload();
}

void frmLogin::lblHomeSite_Click() {
    ui::Open_Home_Site();
}

void frmLogin::txtPassword_KeyPress(int& KeyAscii) {
    if (KeyAscii == kEnter) {
        KeyAscii = 0;
        cmdLogin_Click();
    } else if (KeyAscii == kEscape) {
        KeyAscii = 0;
        cmdClose_Click();
    }
}

void frmLogin::Form_Unload(int& Cancel) {
    (void)Cancel;
    // After a successful login the session goes on in the main console, which closes it.
    if (!m_blnSuccess)
        App_Closing();
}

} // namespace hv
