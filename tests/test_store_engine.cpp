// The store engine (statement building, the result table's conversions, the connection cycle and its
// failure reports: once from Db_Open, twice for an SQL error) and the policy operations on a store laid
// down as the installer lays it down, in a scratch Windows directory.
#include "core/clsLog.h"
#include "store/Bits.h"
#include "testing/StoreTest.h"
#include "testing/TestSupport.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <algorithm>
#include <stdexcept>

using namespace Qt::Literals::StringLiterals;

namespace hv {
namespace {

// Text slots must sit between quotes; identifiers must be plain names. Both are the program's own doing.
TEST(StoreEngineSql, MisbuiltStatementsAreProgrammingErrors) {
    EXPECT_THROW(Sql("WHERE X=") << txt(u"a"_s), std::logic_error);
    EXPECT_THROW(Sql("WHERE X='") << txt(u"a"_s) << " AND", std::logic_error);
    EXPECT_THROW(Sql("X='") << txt(u"a"_s) << num(1), std::logic_error);
    EXPECT_THROW((Sql("X='") << txt(u"a"_s)).Literal_Text(), std::logic_error);
    EXPECT_THROW(Sql("WHERE X='") << num(1), std::logic_error);
    for (const char* bad : {"", "1ABC", "A B", "A;DROP", "A'"})
        EXPECT_THROW(Sql("SELECT ") << ident(QString::fromLatin1(bad)), std::logic_error) << bad;
    EXPECT_NO_THROW(Sql("SELECT ") << ident(u"_Col9"_s));
}

TEST(StoreEngineTable, ConversionsAndSubscripts) {
    constexpr auto& Failure_Of = hv::testing::Raised;
    ResultTable t;
    t.Set_Columns({u"A"_s, u"B"_s});
    t.Append_Row({u"x"_s, std::nullopt});
    EXPECT_TRUE(t.Is_Null(1, 1));
    // NULL comes over as an empty text, which does not convert to a number.
    EXPECT_EQ(t.Text(1, 1), QString());
    EXPECT_EQ(Failure_Of([&] { t.Long(1, 1); }), errnum::TypeMismatch);
    EXPECT_EQ(Failure_Of([&] { t.Text(2, 0); }), errnum::SubscriptOutOfRange);
    EXPECT_EQ(Failure_Of([&] { t.Long(1, 2); }), errnum::SubscriptOutOfRange);
    EXPECT_EQ(Failure_Of([&] { t.Text(-1, 0); }), errnum::SubscriptOutOfRange);
    EXPECT_EQ(Err().Description, u"Subscript out of range"_s);

    // Long converts like an implicit conversion: blanks, signs, banker's rounding, exponents.
    const std::pair<const char*, qint64> good[] = {
        {"12", 12},   {"  12 ", 12}, {"-3", -3}, {"+4", 4},     {"2.5", 2}, {"3.5", 4},
        {"-2.5", -2}, {"2.51", 3},   {".5", 0},  {"1e3", 1000}, {"007", 7}, {"9000000000", 9000000000LL},
    };
    for (const auto& [text, value] : good) {
        t.Append_Row({QString::fromLatin1(text), std::nullopt});
        EXPECT_EQ(t.Long(t.Rows(), 0), value) << text;
    }
    for (const char* bad : {"", " ", "abc", "12abc", "1 2", "1.2.3", "0x10"}) {
        t.Append_Row({QString::fromLatin1(bad), std::nullopt});
        const int row = t.Rows();
        EXPECT_EQ(Failure_Of([&] { t.Long(row, 0); }), errnum::TypeMismatch) << bad;
    }
    Err().Clear();
}

class StoreEngine : public hv::testing::StoreTest {
protected:
    void SetUp() override {
        StoreTest::SetUp();
        Set_Logger(std::make_unique<clsLog>());
        Logger()->Start_Logging(Logger()->strFileName);
    }
    void TearDown() override {
        Set_Logger(nullptr);
        StoreTest::TearDown();
    }
    // One value read through the bare engine, not through the operations.
    std::string Peek(const QString& sql) {
        ResultTable r;
        long n = 0;
        return !Run_Query(Sql().lit(sql), n, r) ? "<error>" : n ? r.Text(1, 0).toStdString() : "<none>";
    }

    ResultTable t;
    long rows = -1;
};

TEST_F(StoreEngine, UnusableStoreIsReportedOnceByOpen) {
    const QString path = Get_Db_Path();
    const std::pair<std::function<void()>, QString> cases[] = {
        {[&] { QFile::remove(path); },
         u"File not found: ErrNo=53: ErrDesc=File not found: ErrSrc=HalvenorTS"_s},
        {[&] { QFile(path).resize(0); }, QString()},
        {[&] { QFile::remove(path), QDir().mkpath(path); },
         QStringLiteral(
             "Path/File access error: ErrNo=75: ErrDesc=Path/File access error: ErrSrc=HalvenorTS")},
    };
    long mode = 0, port = 0;
    QString server, error;
    for (const auto& [make, box] : cases) {
        SCOPED_TRACE(box.toStdString());
        make();
        p.boxes.clear();
        for (const std::function<bool()>& operation :
             std::vector<std::function<bool()>>{[&] { return Run_Query(Sql("SELECT 1"), rows, t); },
                                                [&] { return Run_In_Transaction(Sql("DELETE FROM BL_TBL")); },
                                                [&] { return Get_Remote_Settings(mode, server, port); },
                                                [&] { return Compact_Database(); }}) {
            EXPECT_FALSE(operation());
            EXPECT_EQ(Box_Texts(), QStringList{box});
            EXPECT_EQ(Err().Number, 0);
        }
        EXPECT_EQ(Db_Open(path), 0);
        EXPECT_EQ(QFileInfo(path).isFile() ? QFileInfo(path).size() : 0, 0) << "the store is never created";
        QDir(path).removeRecursively();
        ASSERT_TRUE(Create_Store(path, true, &error)) << error.toStdString();
    }
}

TEST_F(StoreEngine, SqlErrorIsReportedTwiceSqliteTextFirst) {
    EXPECT_FALSE(Run_Query(Sql("SELECT * FROM NO_SUCH_TBL"), rows, t));
    EXPECT_EQ(Box_Texts(), (QStringList{u"no such table: NO_SUCH_TBL"_s, QString()}));
    QFile f(Logger()->strFileName);
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    QStringList lines = QString::fromUtf8(f.readAll()).split(u"\r\n"_s);
    ASSERT_EQ(lines.size(), 3);
    EXPECT_TRUE(lines[1].startsWith(u"E: no such table: NO_SUCH_TBL "_s));
    EXPECT_EQ(lines[2], u"E:"_s + QString(78, u' ') + u": 15-Jan-26 10:00:00"_s);
    // The handle-0 path of Db_Exec is silent.
    EXPECT_FALSE(Db_Exec(0, Sql("SELECT 1"), t, rows));
    Db_Close(0);
    EXPECT_TRUE(p.boxes.empty());
}

// The table holds names, rows and NULLs; the row-by-row form of Run_Query hands over what the table would
// hold, and fails the same way.
TEST_F(StoreEngine, RowsHandedOverOneByOneAreTheTablesRows) {
    Run(u"INSERT INTO USER_TBL (USER_NAME) VALUES ('b')"_s);
    const Sql sql("SELECT USER_ID, USER_NAME, NULL AS NO_VALUE FROM USER_TBL ORDER BY USER_ID");
    ASSERT_TRUE(Run_Query(sql, rows, t));
    EXPECT_EQ(t.Text(0, 0) + t.Text(0, 2), u"USER_IDNO_VALUE"_s);
    EXPECT_EQ(t.Long(1, 0), 0);
    EXPECT_TRUE(t.Is_Null(1, 2));
    QStringList seen;
    long handed = 0;
    ASSERT_TRUE(Run_Query_Rows(
        sql, [&](const QString* cells, int count) { seen << QStringList(cells, cells + count).join(u'|'); },
        handed));
    EXPECT_EQ(handed, rows);
    EXPECT_EQ(seen, (QStringList{t.Text(1, 0) + u"|[All Users...]|"_s, t.Text(2, 0) + u"|b|"_s}));
    EXPECT_TRUE(p.boxes.empty());

    EXPECT_FALSE(Run_Query_Rows(
        Sql("SELECT * FROM NO_SUCH_TBL"), [](const QString*, int) {}, handed));
    EXPECT_EQ(Box_Texts(), (QStringList{u"no such table: NO_SUCH_TBL"_s, QString()}));
    EXPECT_FALSE(Run_Query_Rows(
        Sql("SELECT USER_NAME FROM USER_TBL WHERE USER_NAME='") << txt(u"o'k"_s) << "'",
        [](const QString*, int) {}, handed));
    EXPECT_EQ(Box_Texts().size(), 2);
    EXPECT_EQ(handed, 0);
}

TEST_F(StoreEngine, ApostropheInAValueFailsAsSqlErrorAndRunsNothing) {
    // SQLite's own words for the text as it reads with the value written in; the last one would compile
    // (and log anyone in) but is refused as a syntax error all the same.
    const std::pair<Sql, const char*> cases[] = {
        {Sql("INSERT INTO USER_TBL (USER_NAME) VALUES ('") << txt(u"O'Brien"_s) << "')",
         "near \"Brien\": syntax error"},
        {Sql("UPDATE SETTINGS_TBL SET PWD='") << txt(u"abc'"_s) << "'", "unrecognized token: \"'abc''\""},
        {Sql("SELECT COUNT(*) FROM SETTINGS_TBL WHERE PWD='") << txt(u"' OR '1'='1"_s) << "'",
         "near \"'\": syntax error"},
    };
    for (const auto& [sql, message] : cases) {
        const QStringList expected{QString::fromUtf8(message), QString()};
        EXPECT_FALSE(Run_Query(sql, rows, t));
        EXPECT_EQ(Box_Texts(), expected);
        EXPECT_FALSE(Run_In_Transaction(sql));
        EXPECT_EQ(Box_Texts(), expected);
    }
    EXPECT_EQ(Peek("SELECT COUNT(*) FROM USER_TBL"), "1");
    EXPECT_EQ(Peek("SELECT PWD FROM SETTINGS_TBL"), "Watchman");
}

TEST_F(StoreEngine, TransactionCommitsAfterAFailedStatement) {
    ASSERT_TRUE(Run_In_Transaction(Sql("INSERT INTO BL_TBL VALUES ('b.example', 0, 0)")));
    // OR FAIL keeps what the statement did before its failure; only the COMMIT makes that last.
    EXPECT_FALSE(Run_In_Transaction(Sql(
        "INSERT OR FAIL INTO BL_TBL VALUES ('a.example', 0, 0), ('b.example', 0, 0), ('c.example', 0, 0)")));
    EXPECT_EQ(Box_Texts().size(), 2);
    EXPECT_EQ(Peek("SELECT GROUP_CONCAT(BL_URL) FROM (SELECT BL_URL FROM BL_TBL ORDER BY 1)"),
              "a.example,b.example");
}

// A page shows its list again from the store when the commit of its batch did not go through.
TEST_F(StoreEngine, BatchCloseTellsWhetherTheCommitWentThrough) {
    StoreBatch batch;
    EXPECT_TRUE(batch.Close()); // nothing open, nothing to lose
    ASSERT_NE(batch.Open(), 0);
    ASSERT_TRUE(Db_Exec(batch.Handle(), Sql("INSERT INTO BL_TBL VALUES ('a.example', 0, 0)"), t, rows));
    EXPECT_TRUE(batch.Close());
    ASSERT_NE(batch.Open(), 0);
    ASSERT_TRUE(Db_Exec(batch.Handle(), Sql(kCommitTrans), t, rows));
    EXPECT_FALSE(batch.Close());
    EXPECT_EQ(Box_Texts().size(), 1);
    EXPECT_EQ(Peek("SELECT COUNT(*) FROM BL_TBL"), "1");
}

TEST_F(StoreEngine, LockedStoreIsReportedAtOnce) {
    sqlite3* holder = nullptr;
    ASSERT_EQ(sqlite3_open(Get_Db_Path().toUtf8().constData(), &holder), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(holder, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr), SQLITE_OK);
    EXPECT_FALSE(Run_In_Transaction(Sql("DELETE FROM BL_TBL")));
    sqlite3_exec(holder, "ROLLBACK", nullptr, nullptr, nullptr);
    sqlite3_close(holder);
    // No waiting and no retry: SQLite's words at once, then the operation's own (empty) report.
    EXPECT_EQ(Box_Texts(), (QStringList{u"database is locked"_s, QString()}));
}

class StoreOps : public StoreEngine {
protected:
    void SetUp() override {
        StoreEngine::SetUp();
        ASSERT_TRUE(Add_User(u"alice"_s, m_alice));
        ASSERT_TRUE(Add_User(u"bob"_s, m_bob));
    }
    std::string User_Column(const char* column, long U) {
        return Peek(u"SELECT %1 FROM USER_TBL WHERE USER_ID=%2"_s.arg(QLatin1String(column)).arg(U));
    }
    long m_alice = 0, m_bob = 0;
};

// Below computer 1 the user's row is addressed, else the computer's; the two internet writers always
// write the user's row.
TEST_F(StoreOps, SubjectRuleAndItsTwoExceptions) {
    Run(QStringLiteral(
        "INSERT INTO COMPUTER_TBL (COMPUTER_ID, DEVICE_LOCK, IA_ON_OFF, SCH_FOR, FEATURE_BITS) "
        "VALUES (3, 48, 1, 2, 0)"));
    ASSERT_TRUE(Set_Device_Lock(0, m_alice, 13));
    EXPECT_EQ(User_Column("DEVICE_LOCK", m_alice), "13");
    EXPECT_NE(User_Column("DEVICE_LOCK", m_bob), "13");
    long value = -1;
    ASSERT_TRUE(Get_Device_Lock(3, m_alice, value));
    EXPECT_EQ(value, 48);
    ASSERT_TRUE(Set_Device_Lock(3, m_alice, 1));
    Set_Feature_Bit(true, FEATURE_URL_FILTER, 3, m_alice);
    EXPECT_EQ(Peek("SELECT DEVICE_LOCK || ',' || FEATURE_BITS FROM COMPUTER_TBL WHERE COMPUTER_ID=3"), "1,4");
    EXPECT_EQ(User_Column("DEVICE_LOCK", m_alice), "13");
    EXPECT_FALSE(Is_Feature_Bit_Set(0, m_alice, FEATURE_URL_FILTER));

    ASSERT_TRUE(Set_Internet_On_Off(0, 3, m_alice));
    EXPECT_EQ(User_Column("IA_ON_OFF || ',' || SCH_FOR", m_alice), "0,1");
    ASSERT_TRUE(Set_Schedule_For(2, 3, m_bob));
    EXPECT_EQ(User_Column("SCH_FOR", m_bob), "2");
    EXPECT_EQ(Peek("SELECT IA_ON_OFF || ',' || SCH_FOR FROM COMPUTER_TBL WHERE COMPUTER_ID=3"), "1,2");
    ASSERT_TRUE(Get_Internet_On_Off(3, m_alice, value)); // the readers do follow the rule
    EXPECT_EQ(value, 1);
    EXPECT_EQ(Box_Texts(), QStringList());
}

TEST_F(StoreOps, FeatureBitsChangeOnlyTheirOwnBitAndAFailedReadLosesTheOthers) {
    Run(u"UPDATE USER_TBL SET FEATURE_BITS=259, STATUS_BITS=1 WHERE USER_ID=%1"_s.arg(m_alice));
    Set_Feature_Bit(true, FEATURE_URL_FILTER, 0, m_alice);
    EXPECT_EQ(User_Column("FEATURE_BITS", m_alice), "263");
    Set_Feature_Bit(false, FEATURE_PORT_FILTER, 0, m_alice);
    EXPECT_EQ(User_Column("FEATURE_BITS", m_alice), "261");
    // Clearing a bit that is already clear, or setting one already set, writes the same value back.
    Set_Feature_Bit(false, FEATURE_PORT_FILTER, 0, m_alice);
    EXPECT_EQ(User_Column("FEATURE_BITS", m_alice), "261");
    Set_Feature_Bit(true, FEATURE_URL_FILTER, 0, m_alice);
    EXPECT_EQ(User_Column("FEATURE_BITS", m_alice), "261");
    Set_Status_Bit(false, STATUS_INTERNET_ON_OFF, 0, m_alice);
    EXPECT_EQ(User_Column("STATUS_BITS", m_alice), "1");
    Set_Status_Bit(true, STATUS_INTERNET_ON_OFF, 0, m_alice);
    EXPECT_EQ(User_Column("STATUS_BITS", m_alice), "5");
    EXPECT_EQ(User_Column("FEATURE_BITS", m_alice), "261");
    EXPECT_TRUE(Is_Feature_Bit_Set(0, m_alice, FEATURE_PORT_FILTER | FEATURE_INTERNET_SCHEDULER)); // any bit
    EXPECT_FALSE(Is_Feature_Bit_Set(0, m_alice, FEATURE_PORT_FILTER));
    EXPECT_FALSE(Is_Feature_Bit_Set(0, m_alice, 0));
    EXPECT_EQ(Box_Texts(), QStringList());

    // A value that does not read as a number: the read fails, the change starts from 0.
    Run(u"UPDATE USER_TBL SET FEATURE_BITS='0x107' WHERE USER_ID=%1"_s.arg(m_alice));
    Set_Feature_Bit(true, FEATURE_URL_FILTER, 0, m_alice);
    EXPECT_EQ(User_Column("FEATURE_BITS", m_alice), "4");
    EXPECT_EQ(Box_Texts(), QStringList{QStringLiteral(
                               "Type mismatch: ErrNo=13: ErrDesc=Type mismatch: ErrSrc=HalvenorTS")});
}

TEST_F(StoreOps, BatchAddOfADuplicateAddsNothingAndSucceeds) {
    const int handle = Db_Open(Get_Db_Path());
    ASSERT_NE(handle, 0);
    ASSERT_TRUE(Db_Exec(handle, Sql(kBeginTrans), t, rows));
    EXPECT_TRUE(Add_List_Item(handle, t, "BL_URL", "BL_TBL", "games.example", 0, m_alice));
    EXPECT_TRUE(Add_List_Item(handle, t, "BL_URL", "BL_TBL", "games.example", 0, m_alice));
    EXPECT_TRUE(Add_List_Item(handle, t, "BL_URL", "BL_TBL", "games.example", 0, m_bob));
    ASSERT_TRUE(Db_Exec(handle, Sql(kCommitTrans), t, rows));
    Db_Close(handle);

    ASSERT_TRUE(Get_List_Items("BL_URL", "BL_TBL", 0, m_alice, t, rows));
    ASSERT_EQ(rows, 1);
    EXPECT_EQ(t.Text(1, 0), u"games.example"_s);
    // No connection: false, and nothing shown (the opening has reported already, if it failed).
    EXPECT_FALSE(Add_List_Item(0, t, "BL_URL", "BL_TBL", "x.example", 0, m_alice));
    EXPECT_EQ(Box_Texts(), QStringList());
}

// The users' import: Add_User on the batch's connection gives the same keys as on its own, an existing
// name its existing key, and commits with the batch; a failed statement is reported and gives false.
TEST_F(StoreOps, BatchAddUserGivesTheKeysOfTheCycleAndCommitsWithTheBatch) {
    long carol = 0, again = 0, bad = -1;
    {
        StoreBatch batch;
        ASSERT_NE(batch.Open(), 0);
        ASSERT_TRUE(Add_User(batch.Handle(), batch.result, u"carol"_s, carol));
        EXPECT_GT(carol, m_bob);
        ASSERT_TRUE(Add_User(batch.Handle(), batch.result, u"alice"_s, again));
        EXPECT_EQ(again, m_alice);
        EXPECT_TRUE(batch.Close());
    }
    ASSERT_TRUE(Add_User(u"alice"_s, again)); // on its own connection too
    EXPECT_EQ(again, m_alice);
    EXPECT_EQ(User_Column("USER_NAME", carol), "carol");
    Run(QStringLiteral("CREATE TRIGGER NO_ZED BEFORE INSERT ON USER_TBL WHEN NEW.USER_NAME='zed' "
                       "BEGIN SELECT RAISE(ABORT, 'refused'); END"));
    StoreBatch batch;
    batch.Open();
    EXPECT_FALSE(Add_User(batch.Handle(), batch.result, u"zed"_s, bad));
    EXPECT_EQ(bad, -1);
    EXPECT_FALSE(Add_User(0, batch.result, u"yan"_s, bad));
    EXPECT_TRUE(batch.Close());
    EXPECT_EQ(Box_Texts(), (QStringList{u"refused"_s, QString()}));
}

TEST_F(StoreOps, PortListsSplitAroundSixtyThousand) {
    for (long type : {0L, 5L, 59999L, 60000L, 60001L, 65535L})
        ASSERT_TRUE(Add_Port(80, type, "TCP", 0, m_alice));
    ASSERT_TRUE(Add_Port(81, 65534, "UDP", 0, m_bob));
    auto Types = [&](long kind) {
        std::vector<qint64> types;
        EXPECT_TRUE(Get_Ports(kind, 0, m_alice, t, rows));
        for (; rows > 0; --rows)
            types.push_back(t.Long(int(rows), 1));
        std::sort(types.begin(), types.end());
        return types;
    };
    EXPECT_EQ(Types(0), (std::vector<qint64>{0, 5, 59999}));
    EXPECT_EQ(Types(1), (std::vector<qint64>{60001, 65535}));
    EXPECT_EQ(Types(7), (std::vector<qint64>{60001, 65535})); // any kind but 0 is blocking
}

TEST_F(StoreOps, IdenticalSchedulesBothStoredAndTheOlderKeyComesBack) {
    ResultTable first, second, other, list;
    ASSERT_TRUE(Add_Schedule(1, 0, 1, 0, 0, "08:00", "09:00", 0, m_alice, first));
    ASSERT_TRUE(Add_Schedule(1, 0, 1, 0, 0, "08:00", "09:00", 0, m_alice, second));
    ASSERT_TRUE(Add_Schedule(1, 0, 1, 0, 0, "08:00", "09:00", 0, m_bob, other));
    const qint64 older = first.Long(1, 0);
    EXPECT_EQ(second.Long(1, 0), older);
    EXPECT_NE(other.Long(1, 0), older);
    long rows = 0;
    ASSERT_TRUE(Get_Schedules(1, 0, m_alice, list, rows));
    EXPECT_EQ(rows, 2);
}

TEST_F(StoreOps, UnknownIdNameReadSucceedsButRowReadReportsSubscript) {
    QString name = u"unchanged"_s;
    EXPECT_TRUE(Get_User_Name(0, 9999, name));
    EXPECT_EQ(name, u"unchanged"_s);
    EXPECT_EQ(Box_Texts(), QStringList());

    long lock = 77;
    EXPECT_FALSE(Get_Device_Lock(0, 9999, lock));
    EXPECT_EQ(lock, 77);
    EXPECT_EQ(Box_Texts(),
              QStringList{QStringLiteral(
                  "Subscript out of range: ErrNo=9: ErrDesc=Subscript out of range: ErrSrc=HalvenorTS")});
    EXPECT_TRUE(Set_Device_Lock(0, 9999, 3)); // a write to the unknown row is a quiet success
    EXPECT_EQ(Box_Texts(), QStringList());
}

TEST_F(StoreOps, RemotePortIsStoredAsTextAndReadAsNumber) {
    ASSERT_TRUE(Set_Remote_Settings(1, "srv01", "8080"));
    EXPECT_EQ(Peek("SELECT typeof(CLIENT_PORT) || ':' || CLIENT_PORT FROM SETTINGS_TBL WHERE SETTINGS_ID=1"),
              "text:8080");
    long mode = 0, port = 0;
    QString server;
    ASSERT_TRUE(Get_Remote_Settings(mode, server, port));
    EXPECT_EQ(u"%1|%2|%3"_s.arg(mode).arg(server).arg(port), u"1|srv01|8080"_s);
}

} // namespace
} // namespace hv
