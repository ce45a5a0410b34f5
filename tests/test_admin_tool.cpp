// halvenorts-admin as an administrator runs it: real processes on a real store laid down by the installer.
#include "testing/StoreTest.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace hv {
namespace {

using testing::File_Bytes;
using testing::Raw_Rows;
using testing::Write_File;

struct Outcome {
    int exit = -1;
    QString out, err;
};

QStringList Words(const char* line) {
    return QString::fromUtf8(line).split(u'|');
}

class AdminTool : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(dir.isValid());
        ASSERT_EQ(QProcess::execute(QStringLiteral(HV_SETUP_TOOL), Words("create") << dir.path()), 0);
    }
    QString Store() const { return dir.filePath(QStringLiteral("hvpolicy.iil")); }
    QString File(const char* name) const { return dir.filePath(QLatin1String(name)); }

    Outcome Run(QStringList args, const QString& store = QString()) {
        QProcess p;
        p.start(QStringLiteral(HV_ADMIN_TOOL), Words("--store")
                                                   << (store.isEmpty() ? Store() : store) << args);
        p.waitForFinished(60000);
        return {p.exitCode(), QString::fromLocal8Bit(p.readAllStandardOutput()),
                QString::fromLocal8Bit(p.readAllStandardError())};
    }
    Outcome Run(const char* words) { return Run(Words(words)); }
    // Runs commands that must succeed, to set a store up.
    void Ok(const QList<QStringList>& commands) {
        for (const QStringList& c : commands) {
            const Outcome o = Run(c);
            ASSERT_EQ(o.exit, 0) << c.join(u' ').toStdString() << ": " << o.err.toStdString();
        }
    }
    void Ok(std::initializer_list<const char*> commands) {
        for (const char* c : commands)
            Ok({Words(c)});
    }
    QStringList Rows(const char* sql) { return Raw_Rows(Store(), sql); }

    QTemporaryDir dir;
};

struct Case {
    const char* name;
    const char* args; // words separated by '|'
    int exit;
    const char* err; // contained in standard error; empty: standard error is empty
};

class AdminRefusals : public AdminTool, public ::testing::WithParamInterface<Case> {};

// Every refusal in the words the console's pages use, and usage mistakes told from refusals by exit 2. Bob
// Jones has a Daily 08:00-12:00 window in each scheduler, judged by that scheduler's own rule.
TEST_P(AdminRefusals, EndsAsTheConsoleWould) {
    Ok({"users|add|Bob Jones", "rules|add|--user|Bob Jones|--list|website-black|example.com",
        "exceptions|add|ann", "rules|add|--user|Bob Jones|--list|port|--filter|HTTP Filter|8080",
        "schedules|add|--user|Bob Jones|--scheduler|internet|--type|Daily|--from|08:00|--to|12:00",
        "schedules|add|--user|Bob Jones|--scheduler|application|--type|Daily|--from|08:00|--to|12:00"});
    const Case& c = GetParam();
    const Outcome o = Run(c.args);
    EXPECT_EQ(o.exit, c.exit) << o.err.toStdString();
    if (*c.err)
        EXPECT_TRUE(o.err.contains(QString::fromUtf8(c.err))) << o.err.toStdString();
    else
        EXPECT_TRUE(o.err.isEmpty()) << o.err.toStdString();
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Cases, AdminRefusals, ::testing::Values(
    Case{"whole_word_prefix_refused", "users|add|bob", 1, "User Name already exists!"},
    Case{"part_of_a_word_accepted", "users|add|bo", 0, ""},
    Case{"longer_word_accepted", "users|add|bobby", 0, ""},
    Case{"apostrophe_in_user_name", "users|add|it's", 1, "Please enter a valid User Name!"},
    Case{"all_users_row_kept", "users|remove|[all users...]", 1, "You cannot delete User Name '[All Users...]'!"},
    Case{"all_users_row_not_renamed", "users|rename|[All Users...]|everyone", 1, "cannot be renamed"},
    Case{"rename_to_listed_name", "users|rename|bob jones|[all users...]", 1, "User name already exists!"},
    Case{"exception_in_other_case", "exceptions|add|ANN", 1, "User Name already exists!"},
    Case{"url_with_blank", "rules|add|--user|Bob Jones|--list|website-black|a b", 1, "Please enter a valid URL!."},
    Case{"url_on_the_other_list", "rules|add|--user|Bob Jones|--list|website-white|EXAMPLE.com", 1, "URL already exist in Black List!."},
    Case{"url_already_listed", "rules|add|--user|Bob Jones|--list|website-black| Example.com ", 1, "URL already exist!."},
    Case{"short_extension", "rules|add|--user|Bob Jones|--list|file|x", 1, "Please enter a valid File Extension!."},
    Case{"port_in_the_other_list", "rules|add|--user|Bob Jones|--list|port|--filter|Block Completely|8080", 1, "Port Number already exist!."},
    Case{"port_out_of_range", "rules|add|--user|Bob Jones|--list|port|--filter|HTTP Filter|65536", 1, "Please enter a valid Port Number!"},
    Case{"port_filter_unknown", "rules|add|--user|Bob Jones|--list|port|--filter|Nope|80", 2, "unknown filter"},
    Case{"unknown_user", "rules|list|--user|nobody|--list|file", 1, "There is no user named 'nobody'."},
    Case{"unknown_list", "rules|list|--user|Bob Jones|--list|nope", 2, "unknown list 'nope'"},
    Case{"missing_user_option", "rules|list|--list|file", 2, "--user is required"},
    Case{"bypass_has_no_switch", "rules|enable|--user|Bob Jones|--list|bypass", 2, "has no switch"},
    Case{"unknown_option", "users|list|--frob", 2, "unknown option '--frob'"},
    Case{"unknown_command", "frob", 2, "unknown command 'frob'"},
    Case{"exact_duplicate", "schedules|add|--user|Bob Jones|--scheduler|internet|--type|Daily|--from|08:00|--to|12:00", 1, "Schedule already exist!."},
    Case{"overlap_passes_internet", "schedules|add|--user|Bob Jones|--scheduler|internet|--type|Daily|--from|09:00|--to|10:00", 0, ""},
    Case{"overlap_refused_application", "schedules|add|--user|Bob Jones|--scheduler|application|--type|Daily|--from|09:00|--to|10:00", 1, "Schedule cannot be overlapped!"},
    Case{"to_before_from", "schedules|add|--user|Bob Jones|--scheduler|application|--type|Daily|--from|15:00|--to|14:00", 1, "'To' time should be greater than or equal to 'From' time!"},
    Case{"weekly_without_days", "schedules|add|--user|Bob Jones|--scheduler|internet|--type|Weekly|--from|15:00|--to|16:00", 1, "needs --days"},
    Case{"no_time", "schedules|add|--user|Bob Jones|--scheduler|internet|--type|Daily|--from|25:00|--to|26:00", 1, "is not a time"},
    Case{"help_is_no_error", "rules|add|--help", 0, ""}),
    [](const ::testing::TestParamInfo<Case>& info) { return std::string(info.param.name); });
// clang-format on

TEST_F(AdminTool, RulesWrittenAsThePagesWriteThem) {
    Ok({"users|add|jsmith", "rules|add|--user|JSMITH|--list|website-black| Example.COM |news.example",
        "rules|add|--user|jsmith|--list|exe| Notepad.exe ",
        "rules|remove|--user|jsmith|--list|website-black|NEWS.example",
        "rules|enable|--user|jsmith|--list|exe"});
    Ok({Words("rules|export|--user|jsmith|--list|website-black") << File("black.txt")});
    EXPECT_EQ(Rows("SELECT BL_URL, USER_ID FROM BL_TBL"), QStringList{"example.com|1"});
    EXPECT_EQ(Rows("SELECT EXE_NAME FROM EXE_TBL"), QStringList{"Notepad.exe"});
    EXPECT_EQ(Rows("SELECT FEATURE_BITS FROM USER_TBL WHERE USER_NAME='jsmith'"), QStringList{"128"});
    EXPECT_EQ(File_Bytes(File("black.txt")), QByteArray("example.com\r\n"));
    // A refused text among several writes none of them.
    EXPECT_EQ(Run("rules|add|--user|jsmith|--list|file|.doc|x").exit, 1);
    EXPECT_TRUE(Rows("SELECT * FROM FILE_TBL").isEmpty());
    // A removed user's rules stay behind and are not a new user's.
    Ok({"users|remove|jsmith", "users|add|newcomer"});
    EXPECT_EQ(Run("rules|list|--user|newcomer|--list|website-black").out, QString());
    EXPECT_EQ(Rows("SELECT COUNT(*) FROM BL_TBL"), QStringList{"1"});
}

// The policy as a user sees it: every policy row with its owner's name in place of the store's id.
QStringList Policy_By_Name(const QString& store) {
    QStringList rows =
        Raw_Rows(store, "SELECT USER_NAME, FEATURE_BITS, STATUS_BITS, IA_ON_OFF, SCH_FOR, "
                        "DEVICE_LOCK, URL_MSG_TYPE, BLOCKED_URL_MSG, REDIRECT_URL, APP_MSG_TYPE, "
                        "APP_BLOCKER_MSG FROM USER_TBL ORDER BY USER_NAME");
    // Each rule table by its owner's name, sorted so that ids play no part.
    for (const char* table_columns :
         {"BL_TBL, BL_URL", "WL_TBL, WL_URL", "FILE_TBL, FILE_EXTN", "SMTP_TBL, SMTP_EMAIL",
          "POP3_TBL, POP3_EMAIL", "EXE_TBL, EXE_NAME", "WINDOW_TBL, WINDOW_TITLE",
          "BYPASS_EXE_TBL, BYPASS_EXE", "PORT_TBL, PORT_NO, FILTER_TYPE, PROTOCOL_TYPE",
          "SCH_TBL T, T.SCH_FOR, SCH_SUB_TYPE, D_W_M, WEEKDAYS, MONTHS, FROM_TIME, TO_TIME"}) {
        const QString t = QString::fromLatin1(table_columns);
        QStringList table =
            Raw_Rows(store, QStringLiteral("SELECT '%1', USER_NAME, %2 FROM %1 JOIN USER_TBL USING "
                                           "(USER_ID)")
                                .arg(t.section(u',', 0, 0), t.section(u',', 1))
                                .toUtf8());
        table.sort();
        rows += table;
    }
    rows += Raw_Rows(store, "SELECT E_USER_NAME FROM USER_EXCPN_TBL ORDER BY 1");
    return rows + Raw_Rows(store, "SELECT PROGRAM_MODE, CLIENT_OPTIONS, PWD, REMOTE_MODE, SERVER_NAME, "
                                  "CLIENT_PORT FROM SETTINGS_TBL");
}

TEST_F(AdminTool, PolicyTravelsWholeAndABadFileChangesNothing) {
    QTemporaryDir other;
    ASSERT_EQ(QProcess::execute(QStringLiteral(HV_SETUP_TOOL), Words("demo") << other.path()), 0);
    const QString source = other.filePath(QStringLiteral("hvpolicy.iil"));
    // A removed user leaves a gap in the ids, so names and not ids must carry the policy across.
    Raw_Rows(source, "INSERT INTO PORT_TBL VALUES (8080, 65535, 'TCP', 0, 0)");
    Raw_Rows(source, "INSERT INTO USER_EXCPN_TBL (E_USER_NAME) VALUES ('ann')");
    Raw_Rows(source, "UPDATE SETTINGS_TBL SET PWD='Other', CLIENT_OPTIONS=5");
    const QString file = File("policy.json");
    ASSERT_EQ(Run(Words("policy|export") << file, source).exit, 0);
    ASSERT_EQ(Run(Words("policy|import") << file).exit, 0);
    EXPECT_EQ(Policy_By_Name(Store()), Policy_By_Name(source));
    // Imported again with --replace, nothing doubles.
    ASSERT_EQ(Run(Words("policy|import") << file << QStringLiteral("--replace")).exit, 0);
    EXPECT_EQ(Policy_By_Name(Store()), Policy_By_Name(source));

    Write_File(file, File_Bytes(file).replace("\"Watchman\"", "\"x\"").replace("\"Other\"", "\"it's\""));
    Raw_Rows(Store(), "DELETE FROM BL_TBL");
    const QStringList before = Policy_By_Name(Store());
    const Outcome o = Run(Words("policy|import") << file << QStringLiteral("--replace"));
    EXPECT_EQ(o.exit, 1);
    EXPECT_TRUE(o.err.contains(QStringLiteral("settings.password"))) << o.err.toStdString();
    EXPECT_EQ(Policy_By_Name(Store()), before);
}

TEST_F(AdminTool, CheckNamesWhatIsWrong) {
    EXPECT_EQ(Run("check").exit, 0);
    Raw_Rows(Store(), "DROP TABLE WL_TBL");
    Raw_Rows(Store(), "DELETE FROM SETTINGS_TBL");
    const Outcome o = Run("check");
    EXPECT_EQ(o.exit, 1);
    EXPECT_TRUE(o.out.contains(QStringLiteral("The table WL_TBL is missing."))) << o.out.toStdString();
    EXPECT_TRUE(o.out.contains(QStringLiteral("SETTINGS_TBL has no row with SETTINGS_ID 1")))
        << o.out.toStdString();
    Write_File(File("junk.iil"),
               "not a store at all, just text that goes on for a while.........................");
    EXPECT_EQ(Run(Words("check"), File("junk.iil")).exit, 1);
}

TEST_F(AdminTool, ImportReportsWhatThePageKeepsSilent) {
    Ok({"users|add|jsmith", "rules|add|--user|jsmith|--list|file|.doc"});
    const QString file = File("files.txt");
    const char lines[] = ".exe\r\n.DOC, .zip\r\nx\r\n.zip\r\n.a\0b\r\n"; // line 5 holds a NUL
    Write_File(file, QByteArray(lines, sizeof lines - 1));
    const QStringList args = Words("rules|import|--user|jsmith|--list|file") << file;
    Outcome o = Run(QStringList(args) << QStringLiteral("--dry-run"));
    EXPECT_EQ(o.exit, 1);
    EXPECT_TRUE(o.out.startsWith(QStringLiteral("2 would be added, 2 duplicate(s), 2 refused")))
        << o.out.toStdString();
    EXPECT_TRUE(o.out.contains(QStringLiteral("line 3: \"x\": Please enter a valid File Extension!.")))
        << o.out.toStdString();
    EXPECT_TRUE(o.out.contains(QStringLiteral("line 5:"))) << o.out.toStdString();
    EXPECT_EQ(Rows("SELECT COUNT(*) FROM FILE_TBL"), QStringList{"1"});
    EXPECT_EQ(Run(args).exit, 1);
    EXPECT_EQ(Rows("SELECT FILE_EXTN FROM FILE_TBL ORDER BY 1"), (QStringList{".doc", ".exe", ".zip"}));
}

TEST_F(AdminTool, TwentyOneWindowsAreOneTooMany) {
    Ok({"users|add|jsmith"});
    for (int h = 0; h < 20; ++h)
        Ok({Words("schedules|add|--user|jsmith|--scheduler|application|--type|Daily|--from")
            << QStringLiteral("%1:00").arg(h, 2, 10, QLatin1Char('0')) << QStringLiteral("--to")
            << QStringLiteral("%1:30").arg(h, 2, 10, QLatin1Char('0'))});
    EXPECT_EQ(
        Run("schedules|add|--user|jsmith|--scheduler|application|--type|Daily|--from|22:00|--to|23:00").exit,
        1);
    EXPECT_EQ(Rows("SELECT COUNT(*) FROM SCH_TBL"), QStringList{"20"});
}

struct EffectiveCase {
    const char* name;
    const char* setup; // SQL run before the question, ';'-separated
    const char* at;
    const char* says;
};

class AdminEffective : public AdminTool, public ::testing::WithParamInterface<EffectiveCase> {};

// Single User Mode; jsmith has a Daily window 08:00-12:00, a Weekly one on Monday 18:00-20:00 (2026-01-12
// is a Monday) and a Monthly one in March 21:00-22:00.
TEST_P(AdminEffective, SaysWhetherTheInternetIsOnAndWhy) {
    Ok({"users|add|jsmith",
        "schedules|add|--user|jsmith|--scheduler|internet|--type|Daily|--from|08:00|--to|12:00",
        "schedules|add|--user|jsmith|--scheduler|internet|--type|Weekly|--from|18:00|--to|20:00|--days|Mon",
        "schedules|add|--user|jsmith|--scheduler|internet|--type|Monthly|--from|21:00|--to|22:00|--months|"
        "Mar"});
    Raw_Rows(Store(), "UPDATE SETTINGS_TBL SET PROGRAM_MODE=1");
    for (const QString& sql : QString::fromUtf8(GetParam().setup).split(u';', Qt::SkipEmptyParts))
        Raw_Rows(Store(), sql.toUtf8());
    const Outcome o = Run(Words("effective|--user|jsmith|--at") << QString::fromUtf8(GetParam().at));
    EXPECT_EQ(o.exit, 0) << o.err.toStdString();
    EXPECT_TRUE(o.out.contains(QString::fromUtf8(GetParam().says))) << o.out.toStdString();
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Cases, AdminEffective, ::testing::Values(
    EffectiveCase{"manual_on", "UPDATE USER_TBL SET SCH_FOR=1, IA_ON_OFF=1", "2026-01-12 23:00", "Internet: on (manual mode)"},
    EffectiveCase{"manual_off", "UPDATE USER_TBL SET SCH_FOR=1, IA_ON_OFF=0", "2026-01-12 09:00", "Internet: off (manual mode)"},
    EffectiveCase{"daily_inside", "UPDATE USER_TBL SET SCH_FOR=2", "2026-01-13 11:59", "Internet: on (scheduler, window"},
    EffectiveCase{"window_end_outside", "UPDATE USER_TBL SET SCH_FOR=2", "2026-01-13 12:00", "Internet: off (scheduler, outside its 3 window(s))"},
    EffectiveCase{"weekly_on_its_day", "UPDATE USER_TBL SET SCH_FOR=2", "2026-01-12 19:00", "Weekly 18:00-20:00 Mon"},
    EffectiveCase{"weekly_other_day", "UPDATE USER_TBL SET SCH_FOR=2", "2026-01-13 19:00", "Internet: off"},
    EffectiveCase{"monthly_in_its_month", "UPDATE USER_TBL SET SCH_FOR=2", "2026-03-05 21:30", "Monthly 21:00-22:00 Mar"},
    EffectiveCase{"monthly_other_month", "UPDATE USER_TBL SET SCH_FOR=2", "2026-04-05 21:30", "Internet: off"},
    EffectiveCase{"all_user_mode_uses_first_row", "UPDATE SETTINGS_TBL SET PROGRAM_MODE=0;UPDATE USER_TBL SET SCH_FOR=1, IA_ON_OFF=0 WHERE USER_ID=0",
                  "2026-01-13 11:00", "Internet: off (manual mode)"},
    EffectiveCase{"device_lock_in_words", "UPDATE USER_TBL SET DEVICE_LOCK=52", "2026-01-13 11:00",
                  "Devices: floppy locked, CD/DVD unlocked, USB mass storage read only"}),
    [](const ::testing::TestParamInfo<EffectiveCase>& info) { return std::string(info.param.name); });
// clang-format on

// Fields quoted only where RFC 4180 asks it: a comma, a quote, a line end; an empty field stays empty.
TEST_F(AdminTool, ReportRowsExportAsCsvRecords) {
    Ok({"users|add|jsmith"});
    Raw_Rows(Store(),
             "INSERT INTO URL_RPT_TBL VALUES ('http://m\xc3\xbcnchen.example/?q=1,2', '', "
             "'say \"hi\"' || char(13, 10) || '.exe', 1, 2, '2026-01-14 10:00:00', '2026-01-14 10:05:00', "
             "1), ('http://b.example/', 'b.example', 'x.exe', 1, 2, '2026-01-16 00:00:00', "
             "'2026-01-16 00:01:00', 1)");
    Ok({Words("reports|export|--type|url|--user|jsmith|--from|2026-01-14|--to|2026-01-15|--format|csv")
        << File("url.csv")});
    EXPECT_EQ(
        File_Bytes(File("url.csv")),
        QByteArray("USER,Url Visited,Domain,Application Used,Sent Bits,Received Bits,Start Time,Stop Time\r\n"
                   "jsmith,\"http://m\xc3\xbcnchen.example/?q=1,2\",,\"say \"\"hi\"\"\r\n.exe\",1,2,"
                   "2026-01-14 10:00:00,2026-01-14 10:05:00\r\n"));
}

} // namespace
} // namespace hv
