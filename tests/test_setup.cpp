// The installer's store: what halvenorts-setup lays down, checked through SQLite itself.
#include "testing/StoreTest.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <map>

using namespace Qt::Literals::StringLiterals;

namespace hv {
namespace {

using hv::testing::Raw_Rows;

// The rows of a result joined by newlines.
QString One(const QString& path, const QByteArray& sql) {
    return Raw_Rows(path, sql).join(u'\n');
}

const char* const kReportRows = "SELECT (SELECT COUNT(*) FROM URL_RPT_TBL) + (SELECT COUNT(*) FROM "
                                "PROGRAM_RPT_TBL) + (SELECT COUNT(*) FROM DEVICE_RPT_TBL) + (SELECT COUNT(*) "
                                "FROM EMAIL_RPT_TBL)";

class Setup : public ::testing::Test {
protected:
    void SetUp() override {
        QString error;
        ASSERT_TRUE(Create_Store(Store(), false, &error)) << error.toStdString();
    }
    QString Store() const { return dir.filePath(u"win/hvpolicy.iil"_s); }
    QTemporaryDir dir;
};

// Exit code and output of one run of the tool.
std::pair<int, QString> Setup_Tool(QStringList args) {
    QProcess tool;
    tool.setProcessChannelMode(QProcess::MergedChannels);
    tool.start(QStringLiteral(HV_SETUP_TOOL), args);
    tool.waitForFinished(60000);
    return {tool.exitStatus() == QProcess::NormalExit ? tool.exitCode() : -1,
            QString::fromLocal8Bit(tool.readAll())};
}

TEST_F(Setup, ToolCreatesRefusesToOverwriteAndReplacesWithForce) {
    QString error;
    EXPECT_FALSE(Create_Store(Store(), false, &error));
    EXPECT_FALSE(error.isEmpty());
    const QString folder = dir.filePath(u"tool"_s), store = folder + u"/hvpolicy.iil"_s;
    auto [code, out] = Setup_Tool({"create", folder});
    ASSERT_EQ(code, 0) << out.toStdString();
    Raw_Rows(store, "INSERT INTO USER_TBL (USER_NAME) VALUES ('marker')");
    std::tie(code, out) = Setup_Tool({"create", folder});
    EXPECT_EQ(code, 1);
    EXPECT_TRUE(out.contains(u"already exists"_s)) << out.toStdString();
    EXPECT_EQ(Setup_Tool({"demo", folder, "--report-rows", "10"}).first, 1) << "demo refuses too";
    EXPECT_EQ(One(store, "SELECT COUNT(*) FROM USER_TBL"), u"2"_s);

    std::tie(code, out) = Setup_Tool({"create", "--force", folder});
    ASSERT_EQ(code, 0) << out.toStdString();
    EXPECT_EQ(One(store, "SELECT COUNT(*) FROM USER_TBL"), u"1"_s);
    std::tie(code, out) = Setup_Tool({"demo", folder, "--force", "--report-rows", "10"});
    ASSERT_EQ(code, 0) << out.toStdString();
    EXPECT_EQ(One(store, kReportRows), u"10"_s);
    for (const QStringList& bad :
         {QStringList{}, QStringList{"remove"}, QStringList{"demo", folder, "--report-rows"},
          QStringList{"create", folder, "other"}})
        EXPECT_EQ(Setup_Tool(bad).first, 2) << bad.join(u' ').toStdString();
    EXPECT_FALSE(QFile::exists(store + u".part"_s));
}

// Readers never block the console's writes: new and demo stores are in write-ahead-log mode, and upgrade
// switches an older store without touching its rows; it refuses what is no store.
TEST_F(Setup, StoresUseWriteAheadLoggingAndUpgradeSwitchesOldOnes) {
    const QString mode = u"PRAGMA journal_mode"_s;
    EXPECT_EQ(One(Store(), mode.toUtf8()), u"wal"_s);
    const QString folder = dir.filePath(u"old"_s), store = folder + u"/hvpolicy.iil"_s;
    ASSERT_EQ(Setup_Tool({"demo", folder, "--report-rows", "5"}).first, 0);
    EXPECT_EQ(One(store, mode.toUtf8()), u"wal"_s);
    EXPECT_EQ(One(store, "PRAGMA journal_mode=DELETE"), u"delete"_s);
    const QString users = One(store, "SELECT GROUP_CONCAT(USER_NAME) FROM USER_TBL");

    auto [code, out] = Setup_Tool({"upgrade", folder});
    ASSERT_EQ(code, 0) << out.toStdString();
    EXPECT_EQ(One(store, mode.toUtf8()), u"wal"_s);
    EXPECT_EQ(One(store, "SELECT GROUP_CONCAT(USER_NAME) FROM USER_TBL"), users);
    EXPECT_EQ(One(store, kReportRows), u"5"_s);
    EXPECT_EQ(Setup_Tool({"upgrade", folder}).first, 0) << "a second upgrade changes nothing";

    const QString notStore = dir.filePath(u"text"_s);
    QDir().mkpath(notStore);
    hv::testing::Write_File(notStore + u"/hvpolicy.iil"_s, QByteArray(4096, 'x'));
    for (const QString& bad : {dir.filePath(u"none"_s), notStore}) {
        std::tie(code, out) = Setup_Tool({"upgrade", bad});
        EXPECT_EQ(code, 1) << out.toStdString();
    }
    EXPECT_EQ(Setup_Tool({"upgrade", folder, "--force"}).first, 2);
}

// Columns in order: a bare name is TEXT, '#' marks INTEGER, '*' the primary key.
TEST_F(Setup, SchemaHasEveryTableAndColumnWithDefaults) {
    const QString subject =
        QStringLiteral("FEATURE_BITS#,STATUS_BITS#,IA_ON_OFF#,SCH_FOR#,DEVICE_LOCK#,URL_MSG_TYPE#,"
                       "BLOCKED_URL_MSG,REDIRECT_URL,APP_MSG_TYPE#,APP_BLOCKER_MSG");
    const QString owner = u",COMPUTER_ID#,USER_ID#"_s;
    const std::map<QString, QString> expected = {
        {"SETTINGS_TBL",
         "SETTINGS_ID#,PROGRAM_MODE#,CLIENT_OPTIONS#,PWD,REMOTE_MODE#,SERVER_NAME,CLIENT_PORT"},
        {"USER_TBL", "USER_ID#*,USER_NAME," + subject},
        {"COMPUTER_TBL", "COMPUTER_ID#*," + subject},
        {"USER_EXCPN_TBL", "E_ID#*,E_USER_NAME"},
        {"BL_TBL", "BL_URL" + owner},
        {"WL_TBL", "WL_URL" + owner},
        {"FILE_TBL", "FILE_EXTN" + owner},
        {"SMTP_TBL", "SMTP_EMAIL" + owner},
        {"POP3_TBL", "POP3_EMAIL" + owner},
        {"EXE_TBL", "EXE_NAME" + owner},
        {"WINDOW_TBL", "WINDOW_TITLE" + owner},
        {"BYPASS_EXE_TBL", "BYPASS_EXE" + owner},
        {"PORT_TBL", "PORT_NO#,FILTER_TYPE#,PROTOCOL_TYPE" + owner},
        {"SCH_TBL", "SCH_ID#*,SCH_FOR#,SCH_SUB_TYPE#,D_W_M#,WEEKDAYS#,MONTHS#,FROM_TIME,TO_TIME" + owner},
        {"URL_RPT_TBL", "URL,DOMAIN_NAME,EXE_NAME,SEND_BITS#,RECEIVED_BITS#,START_TIME,STOP_TIME,USER_ID#"},
        {"PROGRAM_RPT_TBL",
         "PROGRAM_NAME,PRODUCT_NAME,PROGRAM_TITLE,PROGRAM_PATH,COMPANY_NAME,START_TIME,STOP_TIME,USER_ID#"},
        {"DEVICE_RPT_TBL",
         "DEVICE,DEVICE_DESCRIPTION,DEVICE_LABEL,MANUFACTURER,START_TIME,STOP_TIME,DEVICE_TYPE#,USER_ID#"},
        {"EMAIL_RPT_TBL",
         "FROM_ADDRESS,TO_ADDRESS,CC_ADDRESS,BCC_ADDRESS,SUBJECT,START_TIME,ATTACHMENT,EMAIL_TYPE#,USER_ID#"},
    };
    const QString db = Store();
    QStringList tables;
    for (const auto& [name, _] : expected)
        tables << name;
    EXPECT_EQ(
        Raw_Rows(db,
                 "SELECT name FROM sqlite_master WHERE type='table' AND name NOT LIKE 'sqlite%' ORDER BY 1"),
        tables);
    for (const auto& [table, columns] : expected) {
        SCOPED_TRACE(table.toStdString());
        // Every column but the key has a default, and none refuses NULL: the other writers of the file may
        // write it.
        EXPECT_EQ(One(db, "SELECT GROUP_CONCAT(name || CASE type WHEN 'INTEGER' THEN '#' WHEN 'TEXT' THEN '' "
                          "ELSE ' ' || type END || CASE pk WHEN 0 THEN '' ELSE '*' END, ','), SUM(pk = 0 AND "
                          "(\"notnull\" OR dflt_value IS NULL)) FROM pragma_table_info('" +
                              table.toLatin1() + "')"),
                  columns + u"|0"_s);
        // A row made of defaults alone has no NULL anywhere.
        Raw_Rows(db, "INSERT INTO " + table.toLatin1() + " DEFAULT VALUES");
        EXPECT_FALSE(One(db, "SELECT * FROM " + table.toLatin1()).contains("<null>"));
    }
}

TEST_F(Setup, KeyRowsDefaultsUniquenessAndIndexes) {
    const QString db = Store();
    EXPECT_EQ(One(db, "SELECT * FROM SETTINGS_TBL"), u"1|0|2|Watchman|0|localhost|5150"_s);
    EXPECT_EQ(One(db, "SELECT USER_ID, USER_NAME FROM USER_TBL"), u"0|[All Users...]"_s);

    // What Add_User leaves: the name alone, everything else from the file's defaults, ids ascending (an
    // ignored repeat of a name may use up a number).
    for (const char* name : {"bob", "bob", "carol"})
        Raw_Rows(db, QByteArray("INSERT OR IGNORE INTO USER_TBL (USER_NAME) VALUES ('") + name + "')");
    const QString defaults =
        QStringLiteral("|0|0|1|1|21|0|This site has been blocked by your administrator.||0|"
                       "This application has been blocked by your administrator.");
    EXPECT_EQ(Raw_Rows(db, "SELECT * FROM USER_TBL WHERE USER_ID>0 ORDER BY USER_ID"),
              (QStringList{"1|bob" + defaults, "3|carol" + defaults}));
    // A removed user's id is not given out again, not even when it was the highest.
    Raw_Rows(db, "DELETE FROM USER_TBL WHERE USER_NAME='carol'");
    Raw_Rows(db, "INSERT OR IGNORE INTO USER_TBL (USER_NAME) VALUES ('dave')");
    EXPECT_EQ(One(db, "SELECT USER_ID FROM USER_TBL WHERE USER_NAME='dave'"), u"4"_s);

    const std::pair<const char*, int> lists[] = {
        {"BL_TBL", 1},  {"WL_TBL", 1},     {"FILE_TBL", 1},       {"SMTP_TBL", 1}, {"POP3_TBL", 1},
        {"EXE_TBL", 1}, {"WINDOW_TBL", 1}, {"BYPASS_EXE_TBL", 3}, {"PORT_TBL", 3},
    };
    for (const auto& [table, rows] : lists) {
        for (int i = 0; i < 3; ++i)
            Raw_Rows(db, QByteArray("INSERT OR IGNORE INTO ") + table + " VALUES (" +
                             (QByteArray(table) == "PORT_TBL" ? "80, 1, 'HTTP'" : "'x'") + ", 0, 7)");
        EXPECT_EQ(One(db, QByteArray("SELECT COUNT(*) FROM ") + table + " WHERE USER_ID=7"),
                  QString::number(rows))
            << table;
    }
    for (const char* report : {"URL_RPT_TBL", "PROGRAM_RPT_TBL", "DEVICE_RPT_TBL", "EMAIL_RPT_TBL"})
        EXPECT_EQ(One(db, QByteArray("SELECT GROUP_CONCAT(i.name) FROM pragma_index_list('") + report +
                              "') l, pragma_index_info(l.name) i"),
                  u"USER_ID,START_TIME"_s)
            << report;
}

TEST_F(Setup, DemoStoreHasUsersRulesAndRecentReportsOfAllKinds) {
    QString error;
    const QDateTime now(QDate(2026, 3, 2), QTime(8, 30, 0));
    ASSERT_TRUE(Fill_Demo(Store(), 401, u"tester"_s, now, &error)) << error.toStdString();
    const QString db = Store();
    EXPECT_EQ(One(db, "SELECT PROGRAM_MODE FROM SETTINGS_TBL"), u"1"_s);
    const QStringList users = Raw_Rows(db, "SELECT USER_NAME FROM USER_TBL ORDER BY USER_ID");
    EXPECT_EQ(users.mid(0, 2).join(u','), u"[All Users...],tester"_s) << users.size() << " users";
    EXPECT_GE(users.size(), 4);
    EXPECT_EQ(One(db, "SELECT (SELECT COUNT(*) FROM BL_TBL) > 0 AND (SELECT COUNT(*) FROM PORT_TBL) > 0 AND "
                      "(SELECT COUNT(*) FROM WINDOW_TBL) > 0"),
              u"1"_s); // rules on several pages
    // Usage rows as the enforcement components write them: of each kind, by real users, in the last 30 days.
    QStringList spans;
    for (const char* table : {"URL_RPT_TBL", "PROGRAM_RPT_TBL", "DEVICE_RPT_TBL", "EMAIL_RPT_TBL"})
        spans << One(
            db,
            QByteArray("SELECT COUNT(*) >= 100, COUNT(DISTINCT USER_ID) > 1, SUM(USER_ID=0), "
                       "MIN(START_TIME) >= '2026-01-31 08:30:00', MAX(START_TIME) <= '2026-03-02 08:30:00', "
                       "SUM(START_TIME NOT GLOB '[0-9][0-9][0-9][0-9]-[0-9][0-9]-[0-9][0-9] "
                       "[0-9][0-9]:[0-9][0-9]:[0-9][0-9]') FROM ") +
                table);
    EXPECT_EQ(spans, QStringList(4, u"1|1|0|1|1|0"_s));
    EXPECT_EQ(One(db, kReportRows), u"401"_s);
}

} // namespace
} // namespace hv
