// The main console's pieces that no scenario reaches: the compiled-in pictures, and the subject read from a
// selector tag that is no number.
#include "platform/Err.h"
#include "testing/ConsoleWorld.h"

#include <QImage>
#include <gtest/gtest.h>

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
    EXPECT_TRUE(Console_Image(QStringLiteral("NoSuchKey")).isNull());
    EXPECT_FALSE(Hand_Cursor().pixmap().isNull());
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
    ui::Set_Tag(main.cboUsers, QStringLiteral("42"));
    EXPECT_EQ(Current_Subject().userId, 42);

    const int before = ui::Forms::Count();
    Show_Page(QStringLiteral("frmNoSuchPage"));
    EXPECT_EQ(ui::Forms::Count(), before);
    EXPECT_TRUE(world.desktop.boxes.empty());
}

} // namespace
} // namespace hv
