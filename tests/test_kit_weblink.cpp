// The kit's link labels: the home-site label every page carries and what a link looks and points like.
#include "core/WebSite.h"
#include "testing/ScriptedPlatform.h"
#include "ui/Images.h"
#include "ui/WebLink.h"

#include <QWidget>
#include <gtest/gtest.h>

namespace {

using namespace hv;

TEST(KitWebLink, HomeSiteLabelShowsTheHostAndOpensTheHomePage) {
    ScriptedPlatform world;
    PlatformScope scope{world};
    Init_Console_Images();
    QWidget page;
    ui::Label* link = ui::Home_Site_Label(&page);
    EXPECT_EQ(link->objectName(), QStringLiteral("lblHomeSite"));
    EXPECT_EQ(link->Caption(), QLatin1String(kWebHost));
    EXPECT_EQ(link->parentWidget(), &page);
    // The custom hand, not the default arrow.
    EXPECT_EQ(link->cursor().shape(), Qt::BitmapCursor);
    EXPECT_TRUE(world.launched.isEmpty());
    ui::Open_Home_Site();
    EXPECT_EQ(world.launched, QStringList{QStringLiteral("https://") + QLatin1String(kWebHost)});
}

} // namespace
