// The copy operations without the page: the time text of copied schedules, the device lock's copy that
// the page does not offer, and the copy's refusal to write where a user cannot be found or where a
// destination turns out to be the source.
#include "admin/model/CopySettings.h"
#include "testing/StoreTest.h"
#include "testing/TestSupport.h"

#include <gtest/gtest.h>

namespace hv {
namespace {

TEST(CopySettingsTime, StoredTimesComeBackAsTwentyFourHourTextWithSeconds) {
    const std::pair<const char*, const char*> good[] = {
        {"08:00", "08:00:00"},   {"8:5", "08:05:00"},        {" 23:59:59 ", "23:59:59"},
        {"00:00", "00:00:00"},   {"8:05 PM", "20:05:00"},    {"12:00 am", "00:00:00"},
        {"12:30PM", "12:30:00"}, {"1:02:03 AM", "01:02:03"},
    };
    for (const auto& [stored, copied] : good)
        EXPECT_EQ(Copied_Time_Text(QString::fromLatin1(stored)), QString::fromLatin1(copied)) << stored;
    for (const char* bad : {"", "8", "24:00", "12:60", "13:00 PM", "0:30 AM", "noon", "08:00:00:00"})
        EXPECT_EQ(hv::testing::Raised([&] { Copied_Time_Text(QString::fromLatin1(bad)); }),
                  errnum::TypeMismatch)
            << bad;
    Err().Clear();
}

class CopySettingsStore : public hv::testing::StoreTest {
protected:
    void SetUp() override {
        StoreTest::SetUp();
        for (const char* name : {"alice", "bob", "BOB"}) {
            long id = 0;
            ASSERT_TRUE(Add_User(QString::fromLatin1(name), id));
        }
        Run("INSERT INTO EXE_TBL (EXE_NAME, COMPUTER_ID, USER_ID) VALUES ('a.exe', 0, 1), ('b.exe', 0, 2)");
    }
    const QStringList exe{QStringLiteral("EXE Blocker")};
};

TEST_F(CopySettingsStore, DeviceLockIsCopiedThoughThePageDoesNotOfferIt) {
    Run("UPDATE USER_TBL SET DEVICE_LOCK=42 WHERE USER_ID=1");
    const CopyFeature* device = Find_Copy_Feature(QStringLiteral("Device Settings"));
    ASSERT_NE(device, nullptr);
    EXPECT_FALSE(device->offered);
    EXPECT_EQ(device->sourceBit, 0);
    EXPECT_TRUE(
        Copy_Settings({}, QStringLiteral("alice"), {device->text}, {QStringLiteral("[All Users...]")}));
    EXPECT_EQ(Column("SELECT DEVICE_LOCK FROM USER_TBL ORDER BY USER_ID"),
              (QStringList{"42", "42", "21", "21"}));
    EXPECT_EQ(Find_Copy_Feature(QStringLiteral("Main Form")), nullptr);
}

TEST_F(CopySettingsStore, UsersThatCannotBeFoundOrLeadBackToTheSourceAreNotWritten) {
    Run("INSERT INTO EXE_TBL (EXE_NAME, COMPUTER_ID, USER_ID) VALUES ('c.exe', 0, 3)");
    // Names are looked up upper-cased, so "bob" and "BOB" lead to one and the same user: copying one onto
    // the other would delete the source's own list before reading it.
    EXPECT_TRUE(Copy_Settings({}, QStringLiteral("bob"), exe, {QStringLiteral("BOB")}));
    EXPECT_EQ(Column("SELECT EXE_NAME FROM EXE_TBL WHERE USER_ID>1 ORDER BY USER_ID"),
              (QStringList{"b.exe", "c.exe"}));

    // A destination that is not found is reported and skipped; the ones after it are copied.
    EXPECT_FALSE(Copy_Settings({}, QStringLiteral("alice"), exe, {QStringLiteral("O'Hara")}));
    EXPECT_TRUE(Copy_Settings({}, QStringLiteral("alice"), exe,
                              {QStringLiteral("nobody"), QStringLiteral("[All Users...]")}));
    EXPECT_EQ(Box_Texts().size(), 3u); // the apostrophe: the store's words and the error; nobody: no row
    EXPECT_EQ(Column("SELECT EXE_NAME || USER_ID FROM EXE_TBL ORDER BY USER_ID"),
              (QStringList{"a.exe0", "a.exe1", "b.exe2", "c.exe3"}));

    // A source that is not found copies nothing at all.
    EXPECT_FALSE(Copy_Settings({}, QStringLiteral("nobody"), exe, {QStringLiteral("alice")}));
    EXPECT_EQ(Column("SELECT COUNT(*) FROM EXE_TBL"), QStringList{"4"});
    p.boxes.clear();
}

TEST_F(CopySettingsStore, LargeListsLetTheWindowBreatheWhileTheyAreWritten) {
    Run("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i<2500) "
        "INSERT INTO BL_TBL (BL_URL, COMPUTER_ID, USER_ID) SELECT 'site' || i, 0, 1 FROM n");
    int breaths = 0;
    const CopyContext ctx{.computerId = 0, .breathe = [&] { ++breaths; }};
    EXPECT_TRUE(Copy_Website_Filter(ctx, 1, 2, true));
    EXPECT_EQ(breaths, 2);
    EXPECT_EQ(Column("SELECT COUNT(*) FROM BL_TBL WHERE USER_ID=2"), QStringList{"2500"});
}

} // namespace
} // namespace hv
