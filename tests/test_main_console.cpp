// The main console's pieces that no scenario reaches: the descriptions of the entries that no list holds,
// the compiled-in pictures, and the subject as a page reads it.
#include "console/frmMain.h"
#include "platform/Err.h"
#include "platform/ScriptedPlatform.h"
#include "setup/StoreSetup.h"
#include "ui/Forms.h"

#include <QImage>
#include <gtest/gtest.h>

namespace hv {
namespace {

TEST(MainConsoleFeatures, DescriptionsByListAndTag) {
    const struct {
        int list, tag;
        const char* begins; // empty: the pair has no text
    } cases[] = {
        {0, 1, "Let's you add whitelist entries"},
        {0, 2, "Enables blocking of any file extenstions."},
        {0, 3, "Email Filter is used to restrict"},
        {0, 4, "Use Port Blocking and Filtering"},
        {0, 5, "Use Internet Scheduler"},
        {0, 6, "Use Internet Settings"},
        {1, 1, "Use EXE Blocker"},
        {1, 2, "Use Window Blocker"},
        {1, 3, "Use Application Scheduler"},
        {1, 4, "Use Application Settings"},
        // Reached by the menu alone, but their texts stay.
        {1, 5,
         "Use Devcie Lock Feature to restrict or grant access to USB, Floppy, CD/DVD Storage Devices for "
         "User(s)."},
        {2, 1, "Use General Options"},
        {2, 2,
         "Use Reporting Option to view and print a detailed report of urls,applications and devices are "
         "used withinn a certain period"},
        {2, 3, "Use Manage Terminal Server User option"},
        {2, 4, "Use Copy Settings"},
        {0, 0, ""},
        {0, 7, ""},
        {1, 6, ""},
        {2, 5, ""},
        {3, 1, ""},
    };
    for (const auto& c : cases) {
        const QString text = frmMain::Feature_Description(c.list, c.tag);
        if (*c.begins == '\0')
            EXPECT_TRUE(text.isEmpty()) << c.list << "/" << c.tag;
        else
            EXPECT_TRUE(text.startsWith(QLatin1String(c.begins)))
                << c.list << "/" << c.tag << ": " << qPrintable(text);
    }
    // The two texts without a list end exactly as shown, with no full stop added to the second.
    EXPECT_TRUE(frmMain::Feature_Description(2, 2).endsWith(QLatin1String("period")));
}

// A picture counts when it has a size and enough visible pixels to be more than a blank square.
int Visible_Pixels(const QIcon& icon) {
    const QImage image = icon.pixmap(32, 32).toImage().convertToFormat(QImage::Format_ARGB32);
    int visible = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (qAlpha(image.pixel(x, y)) > 64)
                ++visible;
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

class MainConsoleSubject : public ::testing::Test {
protected:
    void SetUp() override {
        QString error;
        ASSERT_TRUE(Create_Store(desktop.Windows_Directory() + QStringLiteral("/hvpolicy.iil"), true, &error))
            << qPrintable(error);
    }
    void TearDown() override {
        if (ui::Form* main = ui::Forms::Find(QStringLiteral("frmMain")))
            delete main;
    }
    ScriptedPlatform desktop;
    PlatformScope scope{desktop};
};

TEST_F(MainConsoleSubject, APageOnItsOwnLoadsTheConsoleHidden) {
    // The caption's text is asked first on most pages: it alone must already find the loaded selector.
    EXPECT_EQ(Current_User_Text(), QStringLiteral("[All Users...]"));
    const Subject s = Current_Subject();
    EXPECT_EQ(s.computerId, 0);
    EXPECT_EQ(s.userId, 0); // All User Mode: the "[All Users...]" row
    ui::Form* main = ui::Forms::Find(QStringLiteral("frmMain"));
    ASSERT_NE(main, nullptr);
    EXPECT_TRUE(main->Loaded());
    EXPECT_FALSE(main->isVisible());
    EXPECT_TRUE(desktop.m_boxes.empty());
}

TEST_F(MainConsoleSubject, ATagThatIsNoNumberIsATypeMismatch) {
    auto& main = ui::Forms::Get<frmMain>();
    main.Load();
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
}

TEST_F(MainConsoleSubject, AnUnknownPageOpensNothing) {
    const int before = ui::Forms::Count();
    Show_Page(QStringLiteral("frmNoSuchPage"));
    EXPECT_EQ(ui::Forms::Count(), before);
    EXPECT_TRUE(desktop.m_boxes.empty());
}

} // namespace
} // namespace hv
