// The store engine: statement building, the result table's conversions, the connection cycle and its
// failure reports (once from Db_Open, twice for an SQL error).
#include "TestSupport.h"
#include "console/clsLog.h"
#include "platform/Err.h"
#include "platform/ScriptedPlatform.h"
#include "setup/StoreSetup.h"
#include "store/modDB.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <stdexcept>

namespace hv {
namespace {

// ---------------------------------------------------------------------------------------------------
// Statements

TEST(StoreEngineSql, LiteralAndBoundForms) {
    struct Case {
        Sql sql;
        const char* literal;
        const char* bound;
        std::vector<QVariant> values;
    };
    const Case cases[] = {
        {Sql("SELECT USER_ID FROM USER_TBL WHERE UPPER(USER_NAME)='") << txt(QStringLiteral("BOB")) << "'",
         "SELECT USER_ID FROM USER_TBL WHERE UPPER(USER_NAME)='BOB'",
         "SELECT USER_ID FROM USER_TBL WHERE UPPER(USER_NAME)=?",
         {QVariant(QStringLiteral("BOB"))}},
        {Sql("UPDATE USER_TBL SET FEATURE_BITS=") << num(-7) << " WHERE USER_ID=" << num(12),
         "UPDATE USER_TBL SET FEATURE_BITS=-7 WHERE USER_ID=12",
         "UPDATE USER_TBL SET FEATURE_BITS=? WHERE USER_ID=?",
         {QVariant(qint64(-7)), QVariant(qint64(12))}},
        {Sql("INSERT INTO ") << ident(QStringLiteral("BL_TBL")) << "(" << ident(QStringLiteral("BL_URL"))
                             << ",COMPUTER_ID,USER_ID) VALUES('" << txt(QStringLiteral("a.com")) << "',"
                             << num(0) << ",'" << txt(QString()) << "')",
         "INSERT INTO BL_TBL(BL_URL,COMPUTER_ID,USER_ID) VALUES('a.com',0,'')",
         "INSERT INTO BL_TBL(BL_URL,COMPUTER_ID,USER_ID) VALUES(?,?,?)",
         {QVariant(QStringLiteral("a.com")), QVariant(qint64(0)), QVariant(QString())}},
        {Sql(kBeginTrans), kBeginTrans, kBeginTrans, {}},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(c.sql.Literal_Text(), QLatin1String(c.literal));
        EXPECT_EQ(c.sql.Bound_Text(), QLatin1String(c.bound));
        EXPECT_EQ(c.sql.Values(), c.values) << c.literal;
        EXPECT_FALSE(c.sql.Has_Quote_In_Text());
    }
    EXPECT_TRUE((Sql("X='") << txt(QStringLiteral("O'Brien")) << "'").Has_Quote_In_Text());
}

TEST(StoreEngineSql, MisbuiltStatementsAreProgrammingErrors) {
    EXPECT_THROW(Sql("WHERE X=") << txt(QStringLiteral("a")), std::logic_error); // no opening quote
    EXPECT_THROW(Sql("WHERE X='") << txt(QStringLiteral("a")) << " AND",
                 std::logic_error); // no closing quote
    EXPECT_THROW(Sql("X='") << txt(QStringLiteral("a")) << num(1), std::logic_error);
    EXPECT_THROW((Sql("X='") << txt(QStringLiteral("a"))).Literal_Text(), std::logic_error);
    EXPECT_THROW(Sql("WHERE X='") << num(1), std::logic_error);
    EXPECT_THROW(Sql("WHERE X=") << num(1) << "'", std::logic_error);
    for (const char* bad : {"", "1ABC", "A B", "A;DROP", "A'"})
        EXPECT_THROW(Sql("SELECT ") << ident(QString::fromLatin1(bad)), std::logic_error) << bad;
    EXPECT_NO_THROW(Sql("SELECT ") << ident(QStringLiteral("_Col9")));
}

// ---------------------------------------------------------------------------------------------------
// Result table

class StoreEngineTable : public ::testing::Test {
protected:
    void SetUp() override {
        Err().Clear();
        t.Set_Columns({QStringLiteral("A"), QStringLiteral("B")});
    }
    void TearDown() override { Err().Clear(); }
    static long Failure_Of(const std::function<void()>& f) { return hv::testing::Raised(f); }
    ResultTable t;
};

TEST_F(StoreEngineTable, LongConvertsLikeAnImplicitConversion) {
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
}

TEST_F(StoreEngineTable, MissingCellsAndNullsRaise) {
    t.Append_Row({QStringLiteral("x"), std::nullopt});
    EXPECT_EQ(t.Rows(), 1);
    EXPECT_EQ(t.Text(0, 1), QStringLiteral("B"));
    EXPECT_EQ(t.Text(1, 0), QStringLiteral("x"));
    EXPECT_TRUE(t.Is_Null(1, 1));
    // NULL comes over as an empty text, which does not convert to a number.
    EXPECT_EQ(t.Text(1, 1), QString());
    EXPECT_EQ(Failure_Of([&] { t.Long(1, 1); }), errnum::TypeMismatch);
    EXPECT_EQ(Failure_Of([&] { t.Text(2, 0); }), errnum::SubscriptOutOfRange);
    EXPECT_EQ(Failure_Of([&] { t.Long(1, 2); }), errnum::SubscriptOutOfRange);
    EXPECT_EQ(Failure_Of([&] { t.Text(-1, 0); }), errnum::SubscriptOutOfRange);
    EXPECT_EQ(Err().Description, QStringLiteral("Subscript out of range"));
}

// ---------------------------------------------------------------------------------------------------
// The engine on a store

class StoreEngine : public ::testing::Test {
protected:
    void SetUp() override {
        Err().Clear();
        QString error;
        ASSERT_TRUE(Create_Store(Get_Db_Path(), false, &error)) << error.toStdString();
        Set_Logger(std::make_unique<clsLog>());
        Logger()->Start_Logging(Logger()->strFileName);
    }
    void TearDown() override {
        Set_Logger(nullptr);
        Err().Clear();
    }
    QStringList Box_Texts() const {
        QStringList texts;
        for (const RecordedBox& b : p.m_boxes) {
            EXPECT_EQ(b.style, MsgStyle::Critical);
            texts << b.text;
        }
        return texts;
    }
    QStringList Log_Lines() const {
        QFile f(Logger()->strFileName);
        if (!f.open(QIODevice::ReadOnly))
            return {};
        QStringList lines = QString::fromUtf8(f.readAll()).split(QStringLiteral("\r\n"));
        lines.removeFirst();
        for (QString& l : lines)
            l = l.trimmed();
        return lines;
    }
    QString Scalar(const QString& select) {
        ResultTable t;
        long rows = 0;
        if (!Run_Query(Sql().lit(select), rows, t) || rows < 1)
            return QStringLiteral("<none>");
        return t.Text(1, 0);
    }

    ScriptedPlatform p;
    PlatformScope scope{p};
};

TEST_F(StoreEngine, ResultTableHoldsNamesRowsAndNulls) {
    EXPECT_EQ(Get_Db_Path(), p.Windows_Directory() + QStringLiteral("/hvpolicy.iil"));
    ResultTable t;
    long rows = -1;
    ASSERT_TRUE(Run_Query(Sql("SELECT USER_ID, USER_NAME, NULL AS NO_VALUE FROM USER_TBL"), rows, t))
        << Box_Texts().join(u'/').toStdString();
    EXPECT_EQ(rows, 1);
    EXPECT_EQ(t.Text(0, 0), QStringLiteral("USER_ID"));
    EXPECT_EQ(t.Text(0, 2), QStringLiteral("NO_VALUE"));
    EXPECT_EQ(t.Long(1, 0), 0);
    EXPECT_EQ(t.Text(1, 1), QStringLiteral("[All Users...]"));
    EXPECT_TRUE(t.Is_Null(1, 2));

    ASSERT_TRUE(Run_Query(Sql("SELECT USER_NAME FROM USER_TBL WHERE USER_ID=") << num(99), rows, t));
    EXPECT_EQ(rows, 0);
    EXPECT_EQ(t.Text(0, 0), QStringLiteral("USER_NAME"));
    ASSERT_TRUE(Run_Query(Sql("UPDATE USER_TBL SET FEATURE_BITS=1 WHERE USER_ID=") << num(99), rows, t));
    EXPECT_EQ(rows, 0);

    long mode = -1, port = -1;
    QString server;
    ASSERT_TRUE(Get_Remote_Settings(mode, server, port));
    EXPECT_EQ(mode, 0);
    EXPECT_EQ(server, QStringLiteral("localhost"));
    EXPECT_EQ(port, 5150);

    EXPECT_TRUE(Compact_Database());
    EXPECT_TRUE(p.m_boxes.empty());
    ASSERT_FALSE(Log_Lines().isEmpty());
    EXPECT_EQ(Log_Lines().last(), QStringLiteral("I: Database compressed successfully!") +
                                      QString(80 - 36, u' ') + QStringLiteral(": 15-Jan-26 10:00:00"));
}

TEST_F(StoreEngine, UnusableStoreIsReportedOnceByOpen) {
    struct Case {
        const char* name;
        std::function<void(const QString&)> make;
        QString box;
    };
    const Case cases[] = {
        {"missing", [](const QString& path) { QFile::remove(path); },
         QStringLiteral("File not found: ErrNo=53: ErrDesc=File not found: ErrSrc=HalvenorTS")},
        {"empty", [](const QString& path) { QFile(path).resize(0); }, QString()},
        {"directory",
         [](const QString& path) {
             QFile::remove(path);
             QDir().mkpath(path);
         },
         QStringLiteral(
             "Path/File access error: ErrNo=75: ErrDesc=Path/File access error: ErrSrc=HalvenorTS")},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const QString path = Get_Db_Path();
        c.make(path);
        ResultTable t;
        long rows = 0;
        long mode = 0, port = 0;
        QString server;
        for (const std::function<bool()>& operation : std::vector<std::function<bool()>>{
                 [&] { return Run_Query(Sql("SELECT 1"), rows, t); },
                 [&] { return Run_In_Transaction(Sql("DELETE FROM BL_TBL")); },
                 [&] { return Get_Remote_Settings(mode, server, port); },
                 [&] { return Compact_Database(); },
             }) {
            p.m_boxes.clear();
            EXPECT_FALSE(operation());
            EXPECT_EQ(Box_Texts(), QStringList{c.box});
            EXPECT_EQ(Err().Number, 0);
        }
        EXPECT_EQ(Db_Open(path), 0);
        EXPECT_EQ(QFileInfo(path).isFile() ? QFileInfo(path).size() : 0, 0) << "the store is never created";
        QDir(path).removeRecursively();
        QString error;
        ASSERT_TRUE(Create_Store(path, true, &error)) << error.toStdString();
    }
}

TEST_F(StoreEngine, SqlErrorIsReportedTwiceSqliteTextFirst) {
    ResultTable t;
    long rows = 0;
    EXPECT_FALSE(Run_Query(Sql("SELECT * FROM NO_SUCH_TBL"), rows, t));
    EXPECT_EQ(Box_Texts(), (QStringList{QStringLiteral("no such table: NO_SUCH_TBL"), QString()}));
    const QStringList lines = Log_Lines();
    ASSERT_EQ(lines.size(), 2);
    EXPECT_TRUE(lines[0].startsWith(QStringLiteral("E: no such table: NO_SUCH_TBL ")));
    EXPECT_EQ(lines[1], QStringLiteral("E:") + QString(78, u' ') + QStringLiteral(": 15-Jan-26 10:00:00"));

    // The handle-0 path of Db_Exec is silent.
    p.m_boxes.clear();
    EXPECT_FALSE(Db_Exec(0, Sql("SELECT 1"), t, rows));
    Db_Close(0);
    EXPECT_TRUE(p.m_boxes.empty());
}

TEST_F(StoreEngine, ApostropheInAValueFailsAsSqlErrorAndRunsNothing) {
    // SQLite's own words for the text as it reads with the value written in; a broken text that still
    // compiles is refused as a syntax error all the same.
    struct Case {
        Sql sql;
        const char* message;
    };
    const Case cases[] = {
        {Sql("INSERT INTO USER_TBL (USER_NAME) VALUES ('") << txt(QStringLiteral("O'Brien")) << "')",
         "near \"Brien\": syntax error"},
        {Sql("UPDATE SETTINGS_TBL SET PWD='") << txt(QStringLiteral("x'y")) << "'",
         "near \"y\": syntax error"},
        {Sql("UPDATE SETTINGS_TBL SET PWD='") << txt(QStringLiteral("abc'")) << "'",
         "unrecognized token: \"'abc''\""},
        {Sql("SELECT COUNT(*) FROM SETTINGS_TBL WHERE PWD='") << txt(QStringLiteral("' OR '1'='1")) << "'",
         "near \"'\": syntax error"},
    };
    for (const Case& c : cases) {
        ResultTable t;
        long rows = 0;
        p.m_boxes.clear();
        EXPECT_FALSE(Run_Query(c.sql, rows, t));
        EXPECT_EQ(Box_Texts(), (QStringList{QString::fromUtf8(c.message), QString()}));
        p.m_boxes.clear();
        EXPECT_FALSE(Run_In_Transaction(c.sql));
        EXPECT_EQ(Box_Texts(), (QStringList{QString::fromUtf8(c.message), QString()}));
    }
    EXPECT_EQ(Scalar(QStringLiteral("SELECT COUNT(*) FROM USER_TBL")), QStringLiteral("1"));
    EXPECT_EQ(Scalar(QStringLiteral("SELECT PWD FROM SETTINGS_TBL")), QStringLiteral("Watchman"));
}

TEST_F(StoreEngine, TransactionCommitsAfterAFailedStatement) {
    ASSERT_TRUE(Run_In_Transaction(Sql("INSERT INTO BL_TBL VALUES ('b.example', 0, 0)")));
    // OR FAIL keeps what the statement did before its failure; only the COMMIT makes that last.
    EXPECT_FALSE(Run_In_Transaction(Sql(
        "INSERT OR FAIL INTO BL_TBL VALUES ('a.example', 0, 0), ('b.example', 0, 0), ('c.example', 0, 0)")));
    EXPECT_EQ(Box_Texts().size(), 2);
    EXPECT_EQ(
        Scalar(QStringLiteral("SELECT GROUP_CONCAT(BL_URL) FROM (SELECT BL_URL FROM BL_TBL ORDER BY 1)")),
        QStringLiteral("a.example,b.example"));
}

TEST_F(StoreEngine, BatchOnOneConnectionReusesStatementsAcrossFailures) {
    const int h = Db_Open(Get_Db_Path());
    ASSERT_NE(h, 0);
    const int other = Db_Open(Get_Db_Path());
    EXPECT_NE(other, h);
    Db_Close(other);

    ResultTable t;
    long rows = 0;
    ASSERT_TRUE(Db_Exec(h, Sql(kBeginTrans), t, rows));
    int failures = 0;
    for (const char* url : {"one.example", "two.example", "one.example", "three.example"}) {
        if (!Db_Exec(h,
                     Sql("INSERT INTO WL_TBL (WL_URL, COMPUTER_ID, USER_ID) VALUES ('")
                         << txt(QLatin1String(url)) << "', " << num(0) << ", " << num(4) << ")",
                     t, rows))
            ++failures;
    }
    ASSERT_TRUE(Db_Exec(h, Sql(kCommitTrans), t, rows));
    ASSERT_TRUE(
        Db_Exec(h, Sql("SELECT WL_URL FROM WL_TBL WHERE USER_ID=") << num(4) << " ORDER BY 1", t, rows));
    Db_Close(h);
    EXPECT_EQ(failures, 1);
    EXPECT_EQ(Box_Texts(),
              QStringList{QStringLiteral(
                  "UNIQUE constraint failed: WL_TBL.WL_URL, WL_TBL.COMPUTER_ID, WL_TBL.USER_ID")});
    ASSERT_EQ(rows, 3);
    EXPECT_EQ(t.Text(1, 0) + t.Text(2, 0) + t.Text(3, 0),
              QStringLiteral("one.examplethree.exampletwo.example"));
    EXPECT_FALSE(Db_Exec(h, Sql("SELECT 1"), t, rows)) << "a closed handle is not a connection";
}

TEST_F(StoreEngine, LockedStoreIsReportedAtOnceAndReadWithNoRowIsASubscriptFailure) {
    sqlite3* holder = nullptr;
    ASSERT_EQ(sqlite3_open(Get_Db_Path().toUtf8().constData(), &holder), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(holder, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr), SQLITE_OK);
    EXPECT_FALSE(Run_In_Transaction(Sql("DELETE FROM BL_TBL")));
    sqlite3_exec(holder, "ROLLBACK", nullptr, nullptr, nullptr);
    sqlite3_close(holder);
    // No waiting and no retry: SQLite's words at once, then the operation's own (empty) report.
    EXPECT_EQ(Box_Texts(), (QStringList{QStringLiteral("database is locked"), QString()}));

    p.m_boxes.clear();
    ResultTable t;
    long rows = 0;
    ASSERT_TRUE(Run_Query(Sql("DELETE FROM SETTINGS_TBL"), rows, t));
    long mode = 0, port = 0;
    QString server;
    EXPECT_FALSE(Get_Remote_Settings(mode, server, port));
    EXPECT_EQ(Box_Texts(),
              QStringList{QStringLiteral(
                  "Subscript out of range: ErrNo=9: ErrDesc=Subscript out of range: ErrSrc=HalvenorTS")});
    EXPECT_EQ(Err().Number, 0);
}

} // namespace
} // namespace hv
