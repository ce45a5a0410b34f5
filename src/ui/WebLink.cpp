#include "ui/WebLink.h"

#include "core/WebSite.h"
#include "platform/Platform.h"
#include "ui/Images.h"

namespace hv::ui {

void Style_As_Link(Label* label) {
    label->setCursor(Hand_Cursor());
    label->setStyleSheet(QStringLiteral("color: palette(link); text-decoration: underline;"));
}

Label* Home_Site_Label(QWidget* parent) {
    auto* label = new Label(QStringLiteral("lblHomeSite"), QLatin1String(kWebHost), parent);
    Style_As_Link(label);
    return label;
}

void Open_Home_Site() {
    platform().Shell_Open(Home_Site_Url());
}

} // namespace hv::ui
