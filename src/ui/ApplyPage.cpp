#include "ui/ApplyPage.h"

#include "core/WebSite.h"
#include "core/clsLog.h"
#include "platform/Platform.h"

namespace hv::ui {

ApplyPage::ApplyPage(const QString& formName) : Form(formName) {
    KeyPreview = true;
    cmdApply = new CommandButton(QStringLiteral("cmdApply"), QStringLiteral("Apply"), this);
    cmdClose = new CommandButton(QStringLiteral("cmdClose"), QStringLiteral("Close"), this);
    connect(cmdApply, &CommandButton::Click, this, [this] { Guarded([this] { cmdApply_Click(); }); });
    connect(cmdClose, &CommandButton::Click, this, [this] { cmdClose_Click(); });
}

void ApplyPage::Form_KeyPress(int& KeyAscii) {
    Close_On_Esc(KeyAscii, [this] { cmdClose_Click(); });
}

QHBoxLayout* ApplyPage::Button_Row(bool withHomeSite) {
    auto* row = new QHBoxLayout;
    if (withHomeSite) {
        lblHomeSite = new Label(QStringLiteral("lblHomeSite"), QLatin1String(kWebHost), this);
        lblHomeSite->setCursor(Qt::PointingHandCursor);
        lblHomeSite->setStyleSheet(QStringLiteral("color: palette(link); text-decoration: underline;"));
        connect(lblHomeSite, &Label::Click, this, [] { platform().Shell_Open(Home_Site_Url()); });
        row->addWidget(lblHomeSite);
    }
    row->addStretch(1);
    row->addWidget(cmdApply);
    row->addWidget(cmdClose);
    return row;
}

void ApplyPage::Saved(const QString& message) {
    cmdApply->setEnabled(false);
    MsgBox(message, MsgStyle::Information);
}

} // namespace hv::ui
