// The main console's pieces that no scenario reaches: the compiled-in pictures and the link label's hand, and
// the subject read from a selector tag that is no number.
#include "core/WebSite.h"
#include "platform/Err.h"
#include "testing/ConsoleWorld.h"
#include "ui/WebLink.h"

#include <QImage>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace hv {
namespace {

// A picture counts when it has enough visible pixels to be more than a blank square.
int Visible_Pixels(const QIcon& icon) {
    const QImage image = icon.pixmap(32, 32).toImage().convertToFormat(QImage::Format_ARGB32);
    int visible = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            visible += qAlpha(image.pixel(x, y)) > 64;
    return visible;
}

TEST(MainConsoleImages, EveryImageKeyHasARealPicture) {
    for (const char* key :
         {"WebsiteFilter", "FileFilter", "PortFilter", "EmailFilter", "InternetScheduler", "InternetSettings",
          "AppBlocker", "WindowBlocker", "AppScheduler", "AppSettings", "GenOptions", "ManageUsers",
          "CopySettings", "AllUserMode", "SingleUserMode", "User", "Hand", "Logo", "login"}) {
        const QIcon icon = Console_Image(QLatin1String(key));
        ASSERT_FALSE(icon.isNull()) << key;
        EXPECT_GT(Visible_Pixels(icon), 40) << key;
    }
    EXPECT_TRUE(Console_Image(u"NoSuchKey"_s).isNull());
    EXPECT_FALSE(Hand_Cursor().pixmap().isNull());
    // The home-site label every page carries shows the host under the custom hand, not the default arrow.
    QWidget page;
    ui::Label* link = ui::Home_Site_Label(&page);
    EXPECT_EQ(link->Caption(), QLatin1String(kWebHost));
    EXPECT_EQ(link->cursor().shape(), Qt::BitmapCursor);
}

TEST(MainConsoleSubject, ATagThatIsNoNumberIsATypeMismatchAndAnUnknownPageOpensNothing) {
    hv::testing::ConsoleWorld world;
    QString error;
    ASSERT_TRUE(world.Lay_Store(&error)) << qPrintable(error);
    frmMain& main = world.Main();
    for (const char* tag : {"", "abc", "12x"}) {
        ui::Set_Tag(main.cboUsers, QLatin1String(tag));
        try {
            Current_Subject();
            ADD_FAILURE() << "tag \"" << tag << "\" was taken";
        } catch (const RunTimeFailure&) {
            EXPECT_EQ(Err().Number, errnum::TypeMismatch) << tag;
            Err().Clear();
        }
    }
    ui::Set_Tag(main.cboUsers, u"42"_s);
    EXPECT_EQ(Current_Subject().userId, 42);

    const int before = ui::Forms::Count();
    Show_Page(u"frmNoSuchPage"_s);
    EXPECT_EQ(ui::Forms::Count(), before);
    EXPECT_TRUE(world.desktop.boxes.empty());
}

} // namespace
} // namespace hv
