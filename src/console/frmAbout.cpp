#include "console/frmAbout.h"

#include "core/Version.h"
#include "core/WebSite.h"
#include "platform/Platform.h"
#include "ui/Images.h"
#include "ui/WebLink.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace hv {

namespace {
constexpr int kLogoSize = 64;
} // namespace

frmAbout::frmAbout() : ui::Form(QStringLiteral("frmAbout")) {
    Set_Caption(QStringLiteral("About - Halvenor"));
    setWindowIcon(Console_Image(QStringLiteral("Logo")));
    KeyPreview = true;

    picLogo = new ui::Label(QStringLiteral("picLogo"), QString(), this);
    picLogo->Set_Picture(Console_Image(QStringLiteral("Logo")), kLogoSize);
    picLogo->setAlignment(Qt::AlignTop | Qt::AlignHCenter);
    lblHalvenor = new ui::Label(QStringLiteral("lblHalvenor"), QStringLiteral("HalvenorTS"), this);
    lblHalvenor->setStyleSheet(QStringLiteral("font-size: 14pt; font-weight: bold;"));
    lblVersion = new ui::Label(QStringLiteral("lblVersion"), QStringLiteral("Version"), this);
    lblHomeSite = ui::Home_Site_Label(this);
    lblSupportId = new ui::Label(QStringLiteral("lblSupportId"), QLatin1String(kSupportMail), this);
    lblSalesId = new ui::Label(QStringLiteral("lblSalesId"), QLatin1String(kSalesMail), this);
    cmdOK = new ui::CommandButton(QStringLiteral("cmdOK"), QStringLiteral("OK"), this);
    cmdOK->setAutoDefault(false);

    auto* text = new QVBoxLayout;
    text->setSpacing(6);
    for (QWidget* w : {static_cast<QWidget*>(lblHalvenor), static_cast<QWidget*>(lblVersion),
                       static_cast<QWidget*>(lblHomeSite), static_cast<QWidget*>(lblSupportId),
                       static_cast<QWidget*>(lblSalesId)})
        text->addWidget(w);
    text->addStretch(1);
    auto* top = new QHBoxLayout;
    top->setSpacing(16);
    top->addWidget(picLogo);
    top->addLayout(text, 1);
    auto* bottom = new QHBoxLayout;
    bottom->addStretch(1);
    bottom->addWidget(cmdOK);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(18, 18, 18, 12);
    layout->setSpacing(14);
    layout->addLayout(top);
    layout->addLayout(bottom);
    setMinimumWidth(380);
    setFixedSize(sizeHint());

    connect(cmdOK, &ui::CommandButton::Click, this, &frmAbout::cmdOK_Click);
    connect(picLogo, &ui::Label::Click, this, &frmAbout::picLogo_Click);
    connect(lblHomeSite, &ui::Label::Click, this, &frmAbout::lblHomeSite_Click);
    connect(lblSupportId, &ui::Label::Click, this, &frmAbout::lblSupportId_Click);
    connect(lblSalesId, &ui::Label::Click, this, &frmAbout::lblSalesId_Click);
}

void frmAbout::Form_Load() {
    lblVersion->Set_Caption(Version_Caption());
    picLogo->setCursor(Hand_Cursor());
    ui::Style_As_Link(lblSupportId);
    ui::Style_As_Link(lblSalesId);
}

void frmAbout::Form_KeyPress(int& KeyAscii) {
    ui::Close_On_Esc(KeyAscii, [this] { cmdOK_Click(); });
}

void frmAbout::cmdOK_Click() {
    Unload();
}

void frmAbout::picLogo_Click() {
    ui::Open_Home_Site();
}
void frmAbout::lblHomeSite_Click() {
    ui::Open_Home_Site();
}
void frmAbout::lblSupportId_Click() {
    platform().Shell_Open(Mail_To(kSupportMail));
}
void frmAbout::lblSalesId_Click() {
    platform().Shell_Open(Mail_To(kSalesMail));
}

} // namespace hv
