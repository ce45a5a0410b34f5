// The policy operations against a store laid down as the installer lays it down, in a scratch Windows
// directory. What the operations wrote is checked with SQLite directly, not through the operations.
#include "platform/ScriptedPlatform.h"
#include "setup/StoreSetup.h"
#include "store/Bits.h"
#include "store/modDBFunctions.h"

#include <QFile>
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

using namespace hv;

class StoreOps : public ::testing::Test {
protected:
    void SetUp() override {
        QString error;
        ASSERT_TRUE(Create_Store(m_path, false, &error)) << error.toStdString();
        ASSERT_TRUE(Add_User(QStringLiteral("alice"), m_alice));
        ASSERT_TRUE(Add_User(QStringLiteral("bob"), m_bob));
        m_platform.m_boxes.clear();
    }

    // One value read straight from the file; "<null>" for NULL, "<none>" when there is no row.
    std::string Peek(const char* sql) {
        sqlite3* db = nullptr;
        sqlite3_open_v2(m_path.toUtf8().constData(), &db, SQLITE_OPEN_READWRITE, nullptr);
        sqlite3_stmt* st = nullptr;
        std::string out = "<error>";
        if (sqlite3_prepare_v2(db, sql, -1, &st, nullptr) == SQLITE_OK) {
            const int rc = sqlite3_step(st);
            if (rc == SQLITE_ROW)
                out = sqlite3_column_type(st, 0) == SQLITE_NULL
                          ? "<null>"
                          : reinterpret_cast<const char*>(sqlite3_column_text(st, 0));
            else if (rc == SQLITE_DONE)
                out = "<none>";
        }
        sqlite3_finalize(st);
        sqlite3_close(db);
        return out;
    }
    std::string Peek(const QString& sql) { return Peek(sql.toUtf8().constData()); }
    void Poke(const QString& sql) { EXPECT_NE(Peek(sql), "<error>") << sql.toStdString(); }
    std::string User_Column(const char* column, long U) {
        return Peek(
            QStringLiteral("SELECT %1 FROM USER_TBL WHERE USER_ID=%2").arg(QLatin1String(column)).arg(U));
    }

    std::vector<RecordedBox>& Boxes() { return m_platform.m_boxes; }

    ScriptedPlatform m_platform;
    PlatformScope m_scope{m_platform};
    QString m_path = m_platform.Windows_Directory() + QStringLiteral("/hvpolicy.iil");
    long m_alice = 0, m_bob = 0;
};

TEST_F(StoreOps, SubjectRuleChoosesTheUserRowBelowComputerOne) {
    ASSERT_TRUE(Set_Device_Lock(0, m_alice, 13));
    long lock = -1;
    ASSERT_TRUE(Get_Device_Lock(0, m_alice, lock));
    EXPECT_EQ(lock, 13);
    EXPECT_EQ(User_Column("DEVICE_LOCK", m_alice), "13");
    EXPECT_NE(User_Column("DEVICE_LOCK", m_bob), "13");

    // With a computer id the computer's row is addressed, and the user's row stays as it was.
    Poke(QStringLiteral(
        "INSERT INTO COMPUTER_TBL (COMPUTER_ID, DEVICE_LOCK, IA_ON_OFF, SCH_FOR, FEATURE_BITS) "
        "VALUES (3, 48, 0, 2, 0)"));
    ASSERT_TRUE(Get_Device_Lock(3, m_alice, lock));
    EXPECT_EQ(lock, 48);
    ASSERT_TRUE(Set_Device_Lock(3, m_alice, 1));
    EXPECT_EQ(Peek("SELECT DEVICE_LOCK FROM COMPUTER_TBL WHERE COMPUTER_ID=3"), "1");
    EXPECT_EQ(User_Column("DEVICE_LOCK", m_alice), "13");
    Set_Feature_Bit(true, FEATURE_URL_FILTER, 3, m_alice);
    EXPECT_EQ(Peek("SELECT FEATURE_BITS FROM COMPUTER_TBL WHERE COMPUTER_ID=3"), "4");
    EXPECT_FALSE(Is_Feature_Bit_Set(0, m_alice, FEATURE_URL_FILTER));
    EXPECT_TRUE(Boxes().empty());
}

TEST_F(StoreOps, InternetWritersIgnoreTheComputerId) {
    Poke(QStringLiteral("INSERT INTO COMPUTER_TBL (COMPUTER_ID, IA_ON_OFF, SCH_FOR) VALUES (3, 1, 2)"));
    ASSERT_TRUE(Set_Internet_On_Off(0, 3, m_alice));
    EXPECT_EQ(User_Column("IA_ON_OFF", m_alice), "0");
    EXPECT_EQ(User_Column("SCH_FOR", m_alice), "1");
    ASSERT_TRUE(Set_Schedule_For(2, 3, m_bob));
    EXPECT_EQ(User_Column("SCH_FOR", m_bob), "2");
    EXPECT_EQ(Peek("SELECT IA_ON_OFF || ',' || SCH_FOR FROM COMPUTER_TBL WHERE COMPUTER_ID=3"), "1,2");
    // The readers do follow the rule.
    long value = -1;
    ASSERT_TRUE(Get_Schedule_For(3, m_bob, value));
    EXPECT_EQ(value, 2);
    ASSERT_TRUE(Get_Internet_On_Off(0, m_alice, value));
    EXPECT_EQ(value, 0);
}

TEST_F(StoreOps, FeatureBitsChangeOnlyTheirOwnBitAndRow) {
    Poke(QStringLiteral("UPDATE USER_TBL SET FEATURE_BITS=259, STATUS_BITS=1 WHERE USER_ID=%1").arg(m_alice));
    Set_Feature_Bit(true, FEATURE_URL_FILTER, 0, m_alice);
    EXPECT_EQ(User_Column("FEATURE_BITS", m_alice), "263");
    Set_Feature_Bit(false, FEATURE_PORT_FILTER, 0, m_alice);
    Set_Feature_Bit(false, FEATURE_PORT_FILTER, 0, m_alice); // clearing a clear bit writes the same value
    EXPECT_EQ(User_Column("FEATURE_BITS", m_alice), "261");
    Set_Status_Bit(true, STATUS_INTERNET_ON_OFF, 0, m_alice);
    EXPECT_EQ(User_Column("STATUS_BITS", m_alice), "5");
    EXPECT_EQ(User_Column("FEATURE_BITS", m_alice), "261");

    EXPECT_TRUE(Is_Feature_Bit_Set(0, m_alice, FEATURE_URL_FILTER));
    EXPECT_TRUE(Is_Feature_Bit_Set(0, m_alice, FEATURE_PORT_FILTER | FEATURE_INTERNET_SCHEDULER)); // any bit
    EXPECT_FALSE(Is_Feature_Bit_Set(0, m_alice, FEATURE_PORT_FILTER));
    EXPECT_FALSE(Is_Feature_Bit_Set(0, m_alice, 0));
    EXPECT_NE(User_Column("FEATURE_BITS", m_bob), "261");
    EXPECT_TRUE(Boxes().empty());
}

TEST_F(StoreOps, SetFeatureBitAfterAFailedReadLosesTheOtherBits) {
    // A value that does not read as a number: the read fails, the change starts from 0.
    Poke(QStringLiteral("UPDATE USER_TBL SET FEATURE_BITS='0x107' WHERE USER_ID=%1").arg(m_alice));
    Set_Feature_Bit(true, FEATURE_URL_FILTER, 0, m_alice);
    EXPECT_EQ(User_Column("FEATURE_BITS", m_alice), "4");
    ASSERT_EQ(Boxes().size(), 1u);
    EXPECT_TRUE(Boxes()[0].text.contains(QStringLiteral("Type mismatch"))) << Boxes()[0].text.toStdString();
    EXPECT_EQ(Boxes()[0].style, MsgStyle::Critical);
}

TEST_F(StoreOps, BatchAddOfADuplicateAddsNothingAndSucceeds) {
    const int handle = Db_Open(Get_Db_Path());
    ASSERT_NE(handle, 0);
    ResultTable table;
    long rows = 0;
    ASSERT_TRUE(Db_Exec(handle, Sql(kBeginTrans), table, rows));
    EXPECT_TRUE(Add_List_Item(handle, table, "BL_URL", "BL_TBL", "games.example", 0, m_alice));
    EXPECT_TRUE(Add_List_Item(handle, table, "BL_URL", "BL_TBL", "games.example", 0, m_alice));
    EXPECT_TRUE(Add_List_Item(handle, table, "BL_URL", "BL_TBL", "games.example", 0, m_bob));
    EXPECT_TRUE(Add_Bypass_Exe(handle, table, 0, m_alice, "update.exe"));
    EXPECT_TRUE(Add_Bypass_Exe(handle, table, 0, m_alice, "Tool.exe"));
    EXPECT_TRUE(Remove_Bypass_Exe(handle, table, 0, m_alice, "UPDATE.EXE")); // compared upper-cased
    ASSERT_TRUE(Db_Exec(handle, Sql(kCommitTrans), table, rows));
    Db_Close(handle);

    ResultTable items;
    ASSERT_TRUE(Get_List_Items("BL_URL", "BL_TBL", 0, m_alice, items, rows));
    ASSERT_EQ(rows, 1);
    EXPECT_EQ(items.Text(1, 0), QStringLiteral("games.example"));
    ResultTable exes;
    ASSERT_TRUE(Get_Bypass_Exes(0, m_alice, exes));
    ASSERT_EQ(exes.Rows(), 1);
    EXPECT_EQ(exes.Text(1, 0), QStringLiteral("Tool.exe"));

    // No connection: false, and nothing shown (opening reported already, if it failed).
    EXPECT_FALSE(Add_List_Item(0, table, "BL_URL", "BL_TBL", "x.example", 0, m_alice));
    EXPECT_TRUE(Boxes().empty());
}

TEST_F(StoreOps, BatchRowWithAnApostropheFailsAloneAndTheRestCommits) {
    const int handle = Db_Open(Get_Db_Path());
    ResultTable table;
    long rows = 0;
    Db_Exec(handle, Sql(kBeginTrans), table, rows);
    EXPECT_TRUE(Add_List_Item(handle, table, "WINDOW_TITLE", "WINDOW_TBL", "Solitaire", 0, m_alice));
    EXPECT_FALSE(Add_List_Item(handle, table, "WINDOW_TITLE", "WINDOW_TBL", "Bob's game", 0, m_alice));
    Db_Exec(handle, Sql(kCommitTrans), table, rows);
    Db_Close(handle);
    EXPECT_EQ(Peek("SELECT group_concat(WINDOW_TITLE) FROM WINDOW_TBL"), "Solitaire");
    ASSERT_EQ(Boxes().size(), 2u); // the engine's SQL text, then the operation's own (empty) report
    EXPECT_EQ(Boxes()[0].text, QStringLiteral("near \"s\": syntax error"));
    EXPECT_TRUE(Boxes()[1].text.isEmpty());
}

TEST_F(StoreOps, PortListsSplitAroundSixtyThousand) {
    for (long type : {0L, 5L, 59999L, 60000L, 60001L, 65535L})
        ASSERT_TRUE(Add_Port(80, type, "TCP", 0, m_alice));
    ASSERT_TRUE(Add_Port(81, 65534, "UDP", 0, m_bob));
    auto Types = [&](long kind) {
        ResultTable t;
        long rows = 0;
        EXPECT_TRUE(Get_Ports(kind, 0, m_alice, t, rows));
        std::vector<qint64> types;
        for (long i = 1; i <= rows; ++i)
            types.push_back(t.Long(int(i), 1));
        std::sort(types.begin(), types.end());
        return types;
    };
    EXPECT_EQ(Types(0), (std::vector<qint64>{0, 5, 59999}));
    EXPECT_EQ(Types(1), (std::vector<qint64>{60001, 65535}));
    EXPECT_EQ(Types(7), (std::vector<qint64>{60001, 65535})); // any kind but 0 is blocking
}

TEST_F(StoreOps, IdenticalSchedulesBothStoredAndTheOlderKeyComesBack) {
    ResultTable first, second, other;
    ASSERT_TRUE(Add_Schedule(1, 0, 1, 0, 0, "08:00", "09:00", 0, m_alice, first));
    ASSERT_TRUE(Add_Schedule(1, 0, 1, 0, 0, "08:00", "09:00", 0, m_alice, second));
    ASSERT_TRUE(Add_Schedule(1, 0, 1, 0, 0, "08:00", "09:00", 0, m_bob, other));
    const qint64 older = first.Long(1, 0);
    EXPECT_EQ(second.Long(1, 0), older);
    EXPECT_NE(other.Long(1, 0), older);
    EXPECT_EQ(Peek(QStringLiteral("SELECT COUNT(*) FROM SCH_TBL WHERE USER_ID=%1").arg(m_alice)), "2");

    ResultTable list;
    long rows = 0;
    ASSERT_TRUE(Get_Schedules(1, 0, m_alice, list, rows));
    EXPECT_EQ(rows, 2);
    ASSERT_TRUE(Update_Schedule(older, 0, 2, 10, 0, "10:00", "11:00"));
    EXPECT_EQ(
        Peek(QStringLiteral("SELECT WEEKDAYS || ' ' || FROM_TIME FROM SCH_TBL WHERE SCH_ID=%1").arg(older)),
        "10 10:00");
    ASSERT_TRUE(Remove_User_Schedules(1, m_alice));
    ASSERT_TRUE(Get_Schedules(1, 0, m_alice, list, rows));
    EXPECT_EQ(rows, 0);
}

TEST_F(StoreOps, UnknownIdNameReadSucceedsButRowReadReportsSubscript) {
    QString name = QStringLiteral("unchanged");
    EXPECT_TRUE(Get_User_Name(0, 9999, name));
    EXPECT_EQ(name, QStringLiteral("unchanged"));
    EXPECT_TRUE(Boxes().empty());
    ASSERT_TRUE(Get_User_Name(0, m_bob, name));
    EXPECT_EQ(name, QStringLiteral("bob"));

    long lock = 77;
    EXPECT_FALSE(Get_Device_Lock(0, 9999, lock));
    EXPECT_EQ(lock, 77);
    ASSERT_EQ(Boxes().size(), 1u);
    EXPECT_EQ(Boxes()[0].style, MsgStyle::Critical);
    EXPECT_TRUE(Boxes()[0].text.contains(QStringLiteral("Subscript out of range")))
        << Boxes()[0].text.toStdString();
    // A write to the unknown row is a quiet success.
    EXPECT_TRUE(Set_Device_Lock(0, 9999, 3));
    EXPECT_EQ(Boxes().size(), 1u);
}

TEST_F(StoreOps, RemotePortIsStoredAsTextAndReadAsNumber) {
    ASSERT_TRUE(Set_Remote_Settings(1, "srv01", "8080"));
    EXPECT_EQ(Peek("SELECT typeof(CLIENT_PORT) || ':' || CLIENT_PORT FROM SETTINGS_TBL WHERE SETTINGS_ID=1"),
              "text:8080");
    long mode = 0, port = 0;
    QString server;
    ASSERT_TRUE(Get_Remote_Settings(mode, server, port));
    EXPECT_EQ(mode, 1);
    EXPECT_EQ(server, QStringLiteral("srv01"));
    EXPECT_EQ(port, 8080);
}

TEST_F(StoreOps, PasswordCheckMatchesExactlyAndRefusesAnInjection) {
    EXPECT_TRUE(Check_Password("Watchman"));
    EXPECT_FALSE(Check_Password("watchman"));
    EXPECT_FALSE(Check_Password(""));
    EXPECT_TRUE(Boxes().empty());

    EXPECT_FALSE(Check_Password("' OR '1'='1"));
    ASSERT_EQ(Boxes().size(), 2u);
    EXPECT_EQ(Boxes()[0].style, MsgStyle::Critical);
    EXPECT_TRUE(Boxes()[0].text.contains(QStringLiteral("syntax error"))) << Boxes()[0].text.toStdString();
    EXPECT_EQ(Boxes()[1].style, MsgStyle::Critical);
    EXPECT_TRUE(Boxes()[1].text.isEmpty());

    ASSERT_TRUE(Set_Password("n3w"));
    QString pwd;
    ASSERT_TRUE(Get_Password(pwd));
    EXPECT_EQ(pwd, QStringLiteral("n3w"));
    EXPECT_TRUE(Check_Password("n3w"));
}

TEST_F(StoreOps, UsersByNameAndKey) {
    long again = 0;
    ASSERT_TRUE(Add_User(QStringLiteral("alice"), again)); // a repeated name gives the existing key
    EXPECT_EQ(again, m_alice);
    long id = 0;
    ASSERT_TRUE(Get_User_Id(id, QStringLiteral("ALICE")));
    EXPECT_EQ(id, m_alice);

    ResultTable users;
    long rows = 0;
    ASSERT_TRUE(Get_Users(rows, users));
    ASSERT_EQ(rows, 3);
    EXPECT_EQ(users.Text(1, 0), QStringLiteral("[All Users...]")); // the key row has the lowest id
    EXPECT_EQ(users.Long(3, 1), m_bob);

    ASSERT_TRUE(Rename_User(QStringLiteral("carol"), m_bob));
    ASSERT_TRUE(Remove_User(0, m_alice));
    ASSERT_TRUE(Get_Users(rows, users));
    EXPECT_EQ(rows, 2);
    EXPECT_EQ(users.Text(2, 0), QStringLiteral("carol"));
}

TEST_F(StoreOps, ExceptionUsersAndListEdits) {
    EXPECT_TRUE(Is_New_Exception_User(QStringLiteral("Guest")));
    long id = 0;
    ASSERT_TRUE(Add_Exception_User(QStringLiteral("Guest"), id));
    EXPECT_FALSE(Is_New_Exception_User(QStringLiteral("GUEST")));
    ASSERT_TRUE(Rename_Exception_User(QStringLiteral("Visitor"), id));
    ResultTable t;
    long rows = 0;
    ASSERT_TRUE(Get_Exception_Users(rows, t));
    ASSERT_EQ(rows, 1);
    EXPECT_EQ(t.Text(1, 0), QStringLiteral("Visitor"));
    EXPECT_EQ(t.Long(1, 1), id);
    ASSERT_TRUE(Remove_Exception_User(0, id));
    EXPECT_TRUE(Is_New_Exception_User(QStringLiteral("Visitor")));

    Poke(QStringLiteral("INSERT INTO FILE_TBL (FILE_EXTN,COMPUTER_ID,USER_ID) VALUES ('exe',0,%1)")
             .arg(m_alice));
    EXPECT_TRUE(Update_List_Item("FILE_EXTN", "FILE_TBL", "zip", "rar", 0, m_alice)); // absent: no change
    ASSERT_TRUE(Update_List_Item("FILE_EXTN", "FILE_TBL", "exe", "com", 0, m_alice));
    EXPECT_EQ(Peek("SELECT group_concat(FILE_EXTN) FROM FILE_TBL"), "com");
    ASSERT_TRUE(Remove_User_Rows(m_alice, "FILE_TBL"));
    EXPECT_EQ(Peek("SELECT COUNT(*) FROM FILE_TBL"), "0");
}

TEST_F(StoreOps, MessagesRoundTrip) {
    ASSERT_TRUE(Set_Url_Message(0, m_alice, 3, "Blocked here", "http://r.example/"));
    ASSERT_TRUE(Set_App_Message(0, m_alice, 1, "Not now"));
    long type = -1;
    QString text, redirect;
    ASSERT_TRUE(Get_Url_Message(0, m_alice, type, text, redirect));
    EXPECT_EQ(type, 3);
    EXPECT_EQ(text, QStringLiteral("Blocked here"));
    EXPECT_EQ(redirect, QStringLiteral("http://r.example/"));
    ASSERT_TRUE(Get_App_Message(0, m_alice, type, text));
    EXPECT_EQ(type, 1);
    EXPECT_EQ(text, QStringLiteral("Not now"));
    ASSERT_TRUE(Copy_User_Messages(m_bob, 2, "B", "r", 0, "A"));
    ResultTable t;
    long rows = 0;
    ASSERT_TRUE(Get_User_Messages(m_bob, t, rows));
    ASSERT_EQ(rows, 1);
    EXPECT_EQ(t.Text(1, 1), QStringLiteral("B"));
    EXPECT_EQ(t.Long(1, 3), 0);
}

TEST_F(StoreOps, NullTextReadsEmptyAndNullNumberIsATypeMismatch) {
    Poke(QStringLiteral("UPDATE USER_TBL SET APP_BLOCKER_MSG=NULL WHERE USER_ID=%1").arg(m_alice));
    long type = -1;
    QString text = QStringLiteral("old");
    ASSERT_TRUE(Get_App_Message(0, m_alice, type, text));
    EXPECT_EQ(type, 0);
    EXPECT_TRUE(text.isEmpty());
    EXPECT_TRUE(Boxes().empty());

    Poke(QStringLiteral("UPDATE USER_TBL SET APP_MSG_TYPE=NULL WHERE USER_ID=%1").arg(m_alice));
    EXPECT_FALSE(Get_App_Message(0, m_alice, type, text));
    ASSERT_EQ(Boxes().size(), 1u);
    EXPECT_EQ(Boxes()[0].text,
              QStringLiteral("Type mismatch: ErrNo=13: ErrDesc=Type mismatch: ErrSrc=HalvenorTS"));
}

TEST_F(StoreOps, MissingStoreIsReportedOnceByTheOpening) {
    QFile::remove(m_path);
    long mode = -1;
    EXPECT_FALSE(Get_Program_Mode(mode));
    EXPECT_EQ(mode, -1);
    ASSERT_EQ(Boxes().size(), 1u);
    EXPECT_TRUE(Boxes()[0].text.contains(QStringLiteral("File not found"))) << Boxes()[0].text.toStdString();
    EXPECT_FALSE(Check_Password("Watchman"));
    EXPECT_EQ(Boxes().size(), 2u);
}

} // namespace
