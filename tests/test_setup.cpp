// The installer's store: what halvenorts-setup lays down, checked through SQLite itself.
#include "setup/StoreSetup.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <map>

namespace hv {
namespace {

// A raw connection for looking at a store: each row of a result as its cells joined by '|'.
class Peek final {
public:
    explicit Peek(const QString& path) {
        sqlite3_open_v2(path.toUtf8().constData(), &m_db, SQLITE_OPEN_READWRITE, nullptr);
    }
    ~Peek() { sqlite3_close(m_db); }
    Peek(const Peek&) = delete;
    Peek& operator=(const Peek&) = delete;

    QStringList Rows(const char* sql) {
        QStringList rows;
        sqlite3_stmt* stmt = nullptr;
        if (sqlite3_prepare_v2(m_db, sql, -1, &stmt, nullptr) != SQLITE_OK) {
            ADD_FAILURE() << sql << ": " << sqlite3_errmsg(m_db);
            return rows;
        }
        while (sqlite3_step(stmt) == SQLITE_ROW) {
            QStringList cells;
            for (int c = 0; c < sqlite3_column_count(stmt); ++c) {
                const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(stmt, c));
                cells << (text ? QString::fromUtf8(text) : QStringLiteral("<null>"));
            }
            rows << cells.join(u'|');
        }
        sqlite3_finalize(stmt);
        return rows;
    }
    QString One(const char* sql) {
        const QStringList rows = Rows(sql);
        return rows.size() == 1 ? rows[0] : QStringLiteral("<%1 rows>").arg(rows.size());
    }
    void Exec(const char* sql) {
        if (sqlite3_exec(m_db, sql, nullptr, nullptr, nullptr) != SQLITE_OK)
            ADD_FAILURE() << sql << ": " << sqlite3_errmsg(m_db);
    }

private:
    sqlite3* m_db = nullptr;
};

struct ToolRun {
    int code;
    QString out;
};

ToolRun Setup_Tool(const QStringList& args) {
    QProcess tool;
    tool.setProcessChannelMode(QProcess::MergedChannels);
    tool.start(QStringLiteral(HV_SETUP_TOOL), args);
    tool.waitForFinished(60000);
    return {tool.exitStatus() == QProcess::NormalExit ? tool.exitCode() : -1,
            QString::fromLocal8Bit(tool.readAll())};
}

class Setup : public ::testing::Test {
protected:
    QString Store() const { return dir.filePath(QStringLiteral("win/hvpolicy.iil")); }
    QTemporaryDir dir;
};

TEST_F(Setup, ToolCreatesRefusesToOverwriteAndReplacesWithForce) {
    const QString folder = dir.filePath(QStringLiteral("win"));
    ToolRun r = Setup_Tool({QStringLiteral("create"), folder});
    ASSERT_EQ(r.code, 0) << r.out.toStdString();
    Peek(Store()).Exec("INSERT INTO USER_TBL (USER_NAME) VALUES ('marker')");

    r = Setup_Tool({QStringLiteral("create"), folder});
    EXPECT_EQ(r.code, 1);
    EXPECT_TRUE(r.out.contains(QStringLiteral("already exists"))) << r.out.toStdString();
    EXPECT_EQ(Peek(Store()).One("SELECT COUNT(*) FROM USER_TBL WHERE USER_NAME='marker'"),
              QStringLiteral("1"));

    r = Setup_Tool({QStringLiteral("demo"), folder, QStringLiteral("--report-rows"), QStringLiteral("10")});
    EXPECT_EQ(r.code, 1) << "demo refuses too";

    r = Setup_Tool({QStringLiteral("create"), QStringLiteral("--force"), folder});
    ASSERT_EQ(r.code, 0) << r.out.toStdString();
    EXPECT_EQ(Peek(Store()).One("SELECT COUNT(*) FROM USER_TBL"), QStringLiteral("1"));

    r = Setup_Tool({QStringLiteral("demo"), folder, QStringLiteral("--force"),
                    QStringLiteral("--report-rows"), QStringLiteral("10")});
    ASSERT_EQ(r.code, 0) << r.out.toStdString();
    EXPECT_EQ(
        Peek(Store()).One("SELECT (SELECT COUNT(*) FROM URL_RPT_TBL) + (SELECT COUNT(*) FROM PROGRAM_RPT_TBL)"
                          " + (SELECT COUNT(*) FROM DEVICE_RPT_TBL) + (SELECT COUNT(*) FROM EMAIL_RPT_TBL)"),
        QStringLiteral("10"));

    for (const QStringList& bad :
         {QStringList{}, QStringList{QStringLiteral("remove")},
          QStringList{QStringLiteral("demo"), folder, QStringLiteral("--report-rows")},
          QStringList{QStringLiteral("create"), folder, QStringLiteral("other")}})
        EXPECT_EQ(Setup_Tool(bad).code, 2) << bad.join(u' ').toStdString();
    EXPECT_FALSE(QFile::exists(Store() + QStringLiteral(".part")));
}

TEST_F(Setup, SchemaHasEveryTableAndColumnWithDefaults) {
    QString error;
    ASSERT_TRUE(Create_Store(Store(), false, &error)) << error.toStdString();
    EXPECT_FALSE(Create_Store(Store(), false, &error));
    EXPECT_FALSE(error.isEmpty());

    const QString subject = QStringLiteral(
        "FEATURE_BITS INTEGER,STATUS_BITS INTEGER,IA_ON_OFF INTEGER,SCH_FOR INTEGER,DEVICE_LOCK INTEGER,"
        "URL_MSG_TYPE INTEGER,BLOCKED_URL_MSG TEXT,REDIRECT_URL TEXT,APP_MSG_TYPE INTEGER,APP_BLOCKER_MSG "
        "TEXT");
    const QString owner = QStringLiteral(",COMPUTER_ID INTEGER,USER_ID INTEGER");
    const std::map<QString, QString> expected = {
        {"SETTINGS_TBL", "SETTINGS_ID INTEGER,PROGRAM_MODE INTEGER,CLIENT_OPTIONS INTEGER,PWD TEXT,"
                         "REMOTE_MODE INTEGER,SERVER_NAME TEXT,CLIENT_PORT TEXT"},
        {"USER_TBL", "USER_ID INTEGER pk,USER_NAME TEXT," + subject},
        {"COMPUTER_TBL", "COMPUTER_ID INTEGER pk," + subject},
        {"USER_EXCPN_TBL", "E_ID INTEGER pk,E_USER_NAME TEXT"},
        {"BL_TBL", "BL_URL TEXT" + owner},
        {"WL_TBL", "WL_URL TEXT" + owner},
        {"FILE_TBL", "FILE_EXTN TEXT" + owner},
        {"SMTP_TBL", "SMTP_EMAIL TEXT" + owner},
        {"POP3_TBL", "POP3_EMAIL TEXT" + owner},
        {"EXE_TBL", "EXE_NAME TEXT" + owner},
        {"WINDOW_TBL", "WINDOW_TITLE TEXT" + owner},
        {"BYPASS_EXE_TBL", "BYPASS_EXE TEXT" + owner},
        {"PORT_TBL", "PORT_NO INTEGER,FILTER_TYPE INTEGER,PROTOCOL_TYPE TEXT" + owner},
        {"SCH_TBL", "SCH_ID INTEGER pk,SCH_FOR INTEGER,SCH_SUB_TYPE INTEGER,D_W_M INTEGER,WEEKDAYS INTEGER,"
                    "MONTHS INTEGER,FROM_TIME TEXT,TO_TIME TEXT" +
                        owner},
        {"URL_RPT_TBL", "URL TEXT,DOMAIN_NAME TEXT,EXE_NAME TEXT,SEND_BITS INTEGER,RECEIVED_BITS INTEGER,"
                        "START_TIME TEXT,STOP_TIME TEXT,USER_ID INTEGER"},
        {"PROGRAM_RPT_TBL", "PROGRAM_NAME TEXT,PRODUCT_NAME TEXT,PROGRAM_TITLE TEXT,PROGRAM_PATH TEXT,"
                            "COMPANY_NAME TEXT,START_TIME TEXT,STOP_TIME TEXT,USER_ID INTEGER"},
        {"DEVICE_RPT_TBL",
         "DEVICE TEXT,DEVICE_DESCRIPTION TEXT,DEVICE_LABEL TEXT,MANUFACTURER TEXT,START_TIME TEXT,"
         "STOP_TIME TEXT,DEVICE_TYPE INTEGER,USER_ID INTEGER"},
        {"EMAIL_RPT_TBL", "FROM_ADDRESS TEXT,TO_ADDRESS TEXT,CC_ADDRESS TEXT,BCC_ADDRESS TEXT,SUBJECT TEXT,"
                          "START_TIME TEXT,ATTACHMENT TEXT,EMAIL_TYPE INTEGER,USER_ID INTEGER"},
    };

    Peek db(Store());
    QStringList tables;
    for (const auto& [name, _] : expected)
        tables << name;
    EXPECT_EQ(
        db.Rows(
            "SELECT name FROM sqlite_master WHERE type='table' AND name NOT LIKE 'sqlite%' ORDER BY name"),
        tables);

    for (const auto& [table, columns] : expected) {
        SCOPED_TRACE(table.toStdString());
        QStringList seen;
        const QByteArray info =
            "SELECT name, type, pk, \"notnull\", dflt_value IS NULL FROM pragma_table_info('" +
            table.toLatin1() + "')";
        for (const QString& row : db.Rows(info.constData())) {
            const QStringList c = row.split(u'|');
            seen << c[0] + u' ' + c[1] + (c[2] == QLatin1String("1") ? QStringLiteral(" pk") : QString());
            if (c[2] != QLatin1String("1")) {
                // A default, but NULL is not refused: the other writers of the file may write it.
                EXPECT_EQ(c[3] + c[4], QStringLiteral("00")) << c[0].toStdString() << " needs a default";
            }
        }
        EXPECT_EQ(seen.join(u','), columns);
        // A row made of defaults alone has no NULL anywhere.
        db.Exec(("INSERT INTO " + table.toLatin1() + " DEFAULT VALUES").constData());
        EXPECT_FALSE(
            db.Rows(("SELECT * FROM " + table.toLatin1()).constData()).join(u'\n').contains("<null>"));
    }
}

TEST_F(Setup, KeyRowsDefaultsUniquenessAndIndexes) {
    QString error;
    ASSERT_TRUE(Create_Store(Store(), false, &error)) << error.toStdString();
    Peek db(Store());
    EXPECT_EQ(db.Rows("SELECT * FROM SETTINGS_TBL"),
              QStringList{QStringLiteral("1|0|2|Watchman|0|localhost|5150")});
    EXPECT_EQ(db.Rows("SELECT USER_ID, USER_NAME FROM USER_TBL"),
              QStringList{QStringLiteral("0|[All Users...]")});

    // What Add_User leaves: the name alone, everything else from the file's defaults, ids ascending (an
    // ignored repeat of a name may use up a number).
    db.Exec("INSERT OR IGNORE INTO USER_TBL (USER_NAME) VALUES ('bob')");
    db.Exec("INSERT OR IGNORE INTO USER_TBL (USER_NAME) VALUES ('bob')");
    db.Exec("INSERT OR IGNORE INTO USER_TBL (USER_NAME) VALUES ('carol')");
    EXPECT_EQ(db.Rows("SELECT * FROM USER_TBL WHERE USER_ID>0 ORDER BY USER_ID"),
              (QStringList{
                  QStringLiteral("1|bob|0|0|1|1|21|0|This site has been blocked by your administrator.||0|"
                                 "This application has been blocked by your administrator."),
                  QStringLiteral("3|carol|0|0|1|1|21|0|This site has been blocked by your administrator.||0|"
                                 "This application has been blocked by your administrator.")}));

    // A removed user's id is not given out again, not even when it was the highest.
    db.Exec("DELETE FROM USER_TBL WHERE USER_NAME='carol'");
    db.Exec("INSERT OR IGNORE INTO USER_TBL (USER_NAME) VALUES ('dave')");
    EXPECT_EQ(db.One("SELECT USER_ID FROM USER_TBL WHERE USER_NAME='dave'"), QStringLiteral("4"));

    const std::pair<const char*, int> lists[] = {
        {"BL_TBL", 1},  {"WL_TBL", 1},     {"FILE_TBL", 1},       {"SMTP_TBL", 1}, {"POP3_TBL", 1},
        {"EXE_TBL", 1}, {"WINDOW_TBL", 1}, {"BYPASS_EXE_TBL", 3}, {"PORT_TBL", 3},
    };
    for (const auto& [table, rows] : lists) {
        const QByteArray insert = QByteArray("INSERT OR IGNORE INTO ") + table + " VALUES (" +
                                  (QByteArray(table) == "PORT_TBL" ? "80, 1, 'HTTP'" : "'x'") + ", 0, 7)";
        for (int i = 0; i < 3; ++i)
            db.Exec(insert.constData());
        EXPECT_EQ(db.One((QByteArray("SELECT COUNT(*) FROM ") + table + " WHERE USER_ID=7").constData()),
                  QString::number(rows))
            << table;
    }

    for (const char* report : {"URL_RPT_TBL", "PROGRAM_RPT_TBL", "DEVICE_RPT_TBL", "EMAIL_RPT_TBL"}) {
        const QByteArray sql = QByteArray("SELECT GROUP_CONCAT(i.name) FROM pragma_index_list('") + report +
                               "') l, pragma_index_info(l.name) i";
        EXPECT_EQ(db.One(sql.constData()), QStringLiteral("USER_ID,START_TIME")) << report;
    }
}

TEST_F(Setup, DemoStoreHasUsersRulesAndRecentReportsOfAllKinds) {
    QString error;
    const QDateTime now(QDate(2026, 3, 2), QTime(8, 30, 0));
    ASSERT_TRUE(Create_Store(Store(), false, &error)) << error.toStdString();
    ASSERT_TRUE(Fill_Demo(Store(), 401, QStringLiteral("tester"), now, &error)) << error.toStdString();

    Peek db(Store());
    EXPECT_EQ(db.One("SELECT PROGRAM_MODE FROM SETTINGS_TBL"), QStringLiteral("1"));
    const QStringList users = db.Rows("SELECT USER_NAME FROM USER_TBL ORDER BY USER_ID");
    ASSERT_GE(users.size(), 4);
    EXPECT_EQ(users.mid(0, 2), (QStringList{QStringLiteral("[All Users...]"), QStringLiteral("tester")}));
    EXPECT_NE(db.One("SELECT COUNT(*) FROM USER_TBL WHERE FEATURE_BITS<>0"), QStringLiteral("0"));
    EXPECT_EQ(db.One("SELECT COUNT(DISTINCT SCH_FOR) FROM SCH_TBL"), QStringLiteral("2"));
    for (const char* table :
         {"BL_TBL", "WL_TBL", "FILE_TBL", "SMTP_TBL", "POP3_TBL", "EXE_TBL", "WINDOW_TBL", "PORT_TBL"})
        EXPECT_NE(db.One((QByteArray("SELECT COUNT(*) FROM ") + table).constData()), QStringLiteral("0"))
            << table;

    const QRegularExpression stamp(QStringLiteral("^\\d{4}-\\d{2}-\\d{2} \\d{2}:\\d{2}:\\d{2}$"));
    int total = 0;
    for (const char* table : {"URL_RPT_TBL", "PROGRAM_RPT_TBL", "DEVICE_RPT_TBL", "EMAIL_RPT_TBL"}) {
        SCOPED_TRACE(table);
        const QStringList span =
            db.One((QByteArray("SELECT COUNT(*), MIN(START_TIME), MAX(START_TIME), COUNT(DISTINCT USER_ID), "
                               "SUM(USER_ID=0) FROM ") +
                    table)
                       .constData())
                .split(u'|');
        ASSERT_EQ(span.size(), 5);
        total += span[0].toInt();
        EXPECT_GE(span[0].toInt(), 100);
        EXPECT_TRUE(stamp.match(span[1]).hasMatch() && stamp.match(span[2]).hasMatch())
            << span[1].toStdString();
        EXPECT_GE(span[1], QStringLiteral("2026-01-31 08:30:00"));
        EXPECT_LE(span[2], QStringLiteral("2026-03-02 08:30:00"));
        EXPECT_GT(span[3].toInt(), 1);
        EXPECT_EQ(span[4], QStringLiteral("0")) << "usage belongs to real users";
    }
    EXPECT_EQ(total, 401);
    EXPECT_EQ(db.One("SELECT COUNT(DISTINCT DEVICE_TYPE) FROM DEVICE_RPT_TBL"), QStringLiteral("3"));
    EXPECT_EQ(db.One("SELECT COUNT(DISTINCT EMAIL_TYPE) FROM EMAIL_RPT_TBL"), QStringLiteral("2"));
}

} // namespace
} // namespace hv
