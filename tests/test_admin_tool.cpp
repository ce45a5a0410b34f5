// halvenorts-admin as an administrator runs it: real processes on a real store laid down by the installer.
#include "core/BufferedFile.h"
#include "core/Csv.h"
#include "testing/StoreTest.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace hv {
namespace {

using testing::Raw_Rows;

struct Outcome {
    int exit = -1;
    QString out, err;
};

class AdminTool : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(dir.isValid());
        ASSERT_EQ(QProcess::execute(QStringLiteral(HV_SETUP_TOOL), {QStringLiteral("create"), dir.path()}),
                  0);
    }
    QString Store() const { return dir.filePath(QStringLiteral("hvpolicy.iil")); }

    Outcome Run(QStringList args, const QString& store = QString()) {
        QProcess p;
        args.prepend(store.isEmpty() ? Store() : store);
        args.prepend(QStringLiteral("--store"));
        p.start(QStringLiteral(HV_ADMIN_TOOL), args);
        p.waitForFinished(60000);
        return {p.exitCode(), QString::fromLocal8Bit(p.readAllStandardOutput()),
                QString::fromLocal8Bit(p.readAllStandardError())};
    }
    // Runs commands that must succeed, to set a store up.
    void Ok(const QList<QStringList>& commands) {
        for (const QStringList& c : commands) {
            const Outcome o = Run(c);
            ASSERT_EQ(o.exit, 0) << c.join(u' ').toStdString() << ": " << o.err.toStdString();
        }
    }
    QStringList Rows(const char* sql, const QString& store = QString()) {
        return Raw_Rows(store.isEmpty() ? Store() : store, sql);
    }

    QTemporaryDir dir;
};

QStringList Words(const char* line) {
    return QString::fromUtf8(line).split(u'|');
}

struct Case {
    const char* name;
    const char* args; // words separated by '|'
    int exit;
    const char* err; // contained in standard error; empty: standard error is empty
};

class AdminRefusals : public AdminTool, public ::testing::WithParamInterface<Case> {};

// Every refusal in the words the console's pages use, and usage mistakes told from refusals by exit 2.
TEST_P(AdminRefusals, EndsAsTheConsoleWould) {
    Ok({{QStringLiteral("users"), QStringLiteral("add"), QStringLiteral("Bob Jones")},
        {QStringLiteral("rules"), QStringLiteral("add"), QStringLiteral("--user"),
         QStringLiteral("Bob Jones"), QStringLiteral("--list"), QStringLiteral("website-black"),
         QStringLiteral("example.com")},
        {QStringLiteral("exceptions"), QStringLiteral("add"), QStringLiteral("ann")},
        Words("rules|add|--user|Bob Jones|--list|port|--filter|HTTP Filter|8080")});
    const Case& c = GetParam();
    const Outcome o = Run(Words(c.args));
    EXPECT_EQ(o.exit, c.exit) << o.err.toStdString();
    if (*c.err)
        EXPECT_TRUE(o.err.contains(QString::fromUtf8(c.err))) << o.err.toStdString();
    else
        EXPECT_TRUE(o.err.isEmpty()) << o.err.toStdString();
}

INSTANTIATE_TEST_SUITE_P(
    Cases, AdminRefusals,
    ::testing::Values(
        Case{"whole_word_prefix_refused", "users|add|bob", 1, "User Name already exists!"},
        Case{"part_of_a_word_accepted", "users|add|bo", 0, ""},
        Case{"longer_word_accepted", "users|add|bobby", 0, ""},
        Case{"apostrophe_in_user_name", "users|add|it's", 1, "Please enter a valid User Name!"},
        Case{"all_users_row_kept", "users|remove|[all users...]", 1,
             "You cannot delete User Name '[All Users...]'!"},
        Case{"all_users_row_not_renamed", "users|rename|[All Users...]|everyone", 1, "cannot be renamed"},
        Case{"rename_to_listed_name", "users|rename|bob jones|[all users...]", 1,
             "User name already exists!"},
        Case{"exception_in_other_case", "exceptions|add|ANN", 1, "User Name already exists!"},
        Case{"url_with_blank", "rules|add|--user|Bob Jones|--list|website-black|a b", 1,
             "Please enter a valid URL!."},
        Case{"url_on_the_other_list", "rules|add|--user|Bob Jones|--list|website-white|EXAMPLE.com", 1,
             "URL already exist in Black List!."},
        Case{"url_already_listed", "rules|add|--user|Bob Jones|--list|website-black| Example.com ", 1,
             "URL already exist!."},
        Case{"short_extension", "rules|add|--user|Bob Jones|--list|file|x", 1,
             "Please enter a valid File Extension!."},
        Case{"port_in_the_other_list",
             "rules|add|--user|Bob Jones|--list|port|--filter|Block Completely|8080", 1,
             "Port Number already exist!."},
        Case{"port_out_of_range", "rules|add|--user|Bob Jones|--list|port|--filter|HTTP Filter|65536", 1,
             "Please enter a valid Port Number!"},
        Case{"port_filter_unknown", "rules|add|--user|Bob Jones|--list|port|--filter|Nope|80", 2,
             "unknown filter"},
        Case{"unknown_user", "rules|list|--user|nobody|--list|file", 1, "There is no user named 'nobody'."},
        Case{"unknown_list", "rules|list|--user|Bob Jones|--list|nope", 2, "unknown list 'nope'"},
        Case{"missing_user_option", "rules|list|--list|file", 2, "--user is required"},
        Case{"bypass_has_no_switch", "rules|enable|--user|Bob Jones|--list|bypass", 2, "has no switch"},
        Case{"unknown_option", "users|list|--frob", 2, "unknown option '--frob'"},
        Case{"unknown_command", "frob", 2, "unknown command 'frob'"},
        Case{"help_is_no_error", "rules|add|--help", 0, ""}),
    [](const ::testing::TestParamInfo<Case>& info) { return std::string(info.param.name); });

TEST_F(AdminTool, RulesWrittenAsThePagesWriteThem) {
    Ok({{QStringLiteral("users"), QStringLiteral("add"), QStringLiteral("jsmith")},
        {QStringLiteral("rules"), QStringLiteral("add"), QStringLiteral("--user"), QStringLiteral("JSMITH"),
         QStringLiteral("--list"), QStringLiteral("website-black"), QStringLiteral(" Example.COM "),
         QStringLiteral("news.example")},
        {QStringLiteral("rules"), QStringLiteral("add"), QStringLiteral("--user"), QStringLiteral("jsmith"),
         QStringLiteral("--list"), QStringLiteral("exe"), QStringLiteral(" Notepad.exe ")},
        {QStringLiteral("rules"), QStringLiteral("remove"), QStringLiteral("--user"),
         QStringLiteral("jsmith"), QStringLiteral("--list"), QStringLiteral("website-black"),
         QStringLiteral("NEWS.example")},
        {QStringLiteral("rules"), QStringLiteral("enable"), QStringLiteral("--user"),
         QStringLiteral("jsmith"), QStringLiteral("--list"), QStringLiteral("exe")},
        {QStringLiteral("rules"), QStringLiteral("export"), QStringLiteral("--user"),
         QStringLiteral("jsmith"), QStringLiteral("--list"), QStringLiteral("website-black"),
         dir.filePath(QStringLiteral("black.txt"))}});
    EXPECT_EQ(Rows("SELECT BL_URL, USER_ID FROM BL_TBL"), QStringList{QStringLiteral("example.com|1")});
    EXPECT_EQ(Rows("SELECT EXE_NAME FROM EXE_TBL"), QStringList{QStringLiteral("Notepad.exe")});
    EXPECT_EQ(Rows("SELECT FEATURE_BITS FROM USER_TBL WHERE USER_NAME='jsmith'"),
              QStringList{QStringLiteral("128")});
    QFile exported(dir.filePath(QStringLiteral("black.txt")));
    ASSERT_TRUE(exported.open(QIODevice::ReadOnly));
    EXPECT_EQ(exported.readAll(), QByteArray("example.com\r\n"));
    // A refused text among several writes none of them.
    const Outcome o = Run({QStringLiteral("rules"), QStringLiteral("add"), QStringLiteral("--user"),
                           QStringLiteral("jsmith"), QStringLiteral("--list"), QStringLiteral("file"),
                           QStringLiteral(".doc"), QStringLiteral("x")});
    EXPECT_EQ(o.exit, 1);
    EXPECT_TRUE(Rows("SELECT * FROM FILE_TBL").isEmpty());
    // A removed user's rules stay behind and are not a new user's.
    Ok({{QStringLiteral("users"), QStringLiteral("remove"), QStringLiteral("jsmith")},
        {QStringLiteral("users"), QStringLiteral("add"), QStringLiteral("newcomer")}});
    EXPECT_EQ(Run({QStringLiteral("rules"), QStringLiteral("list"), QStringLiteral("--user"),
                   QStringLiteral("newcomer"), QStringLiteral("--list"), QStringLiteral("website-black")})
                  .out,
              QString());
    EXPECT_EQ(Rows("SELECT COUNT(*) FROM BL_TBL"), QStringList{QStringLiteral("1")});
}

// The policy as a user sees it: every policy row with its owner's name in place of the store's id.
QStringList Policy_By_Name(const QString& store) {
    QStringList rows;
    for (const char* sql :
         {"SELECT USER_NAME, FEATURE_BITS, STATUS_BITS, IA_ON_OFF, SCH_FOR, DEVICE_LOCK, URL_MSG_TYPE, "
          "BLOCKED_URL_MSG, REDIRECT_URL, APP_MSG_TYPE, APP_BLOCKER_MSG FROM USER_TBL ORDER BY USER_NAME",
          "SELECT 'BL', USER_NAME, BL_URL FROM BL_TBL JOIN USER_TBL USING (USER_ID) ORDER BY 2, 3",
          "SELECT 'WL', USER_NAME, WL_URL FROM WL_TBL JOIN USER_TBL USING (USER_ID) ORDER BY 2, 3",
          "SELECT 'FILE', USER_NAME, FILE_EXTN FROM FILE_TBL JOIN USER_TBL USING (USER_ID) ORDER BY 2, 3",
          "SELECT 'SMTP', USER_NAME, SMTP_EMAIL FROM SMTP_TBL JOIN USER_TBL USING (USER_ID) ORDER BY 2, 3",
          "SELECT 'POP3', USER_NAME, POP3_EMAIL FROM POP3_TBL JOIN USER_TBL USING (USER_ID) ORDER BY 2, 3",
          "SELECT 'EXE', USER_NAME, EXE_NAME FROM EXE_TBL JOIN USER_TBL USING (USER_ID) ORDER BY 2, 3",
          "SELECT 'WIN', USER_NAME, WINDOW_TITLE FROM WINDOW_TBL JOIN USER_TBL USING (USER_ID) ORDER BY 2, 3",
          "SELECT 'BYPASS', USER_NAME, BYPASS_EXE FROM BYPASS_EXE_TBL JOIN USER_TBL USING (USER_ID) ORDER BY "
          "2, 3",
          "SELECT 'PORT', USER_NAME, PORT_NO, FILTER_TYPE, PROTOCOL_TYPE FROM PORT_TBL JOIN USER_TBL USING "
          "(USER_ID) "
          "ORDER BY 2, 3, 4",
          "SELECT 'SCH', USER_NAME, T.SCH_FOR, SCH_SUB_TYPE, D_W_M, WEEKDAYS, MONTHS, FROM_TIME, TO_TIME "
          "FROM SCH_TBL T "
          "JOIN USER_TBL USING (USER_ID) ORDER BY 2, 3, 8",
          "SELECT E_USER_NAME FROM USER_EXCPN_TBL ORDER BY 1",
          "SELECT PROGRAM_MODE, CLIENT_OPTIONS, PWD, REMOTE_MODE, SERVER_NAME, CLIENT_PORT FROM "
          "SETTINGS_TBL"})
        rows += Raw_Rows(store, sql);
    return rows;
}

TEST_F(AdminTool, PolicyTravelsWholeAndABadFileChangesNothing) {
    QTemporaryDir other;
    ASSERT_EQ(QProcess::execute(QStringLiteral(HV_SETUP_TOOL), {QStringLiteral("demo"), other.path()}), 0);
    const QString source = other.filePath(QStringLiteral("hvpolicy.iil"));
    // A removed user leaves a gap in the ids, so names and not ids must carry the policy across.
    Raw_Rows(source, "INSERT INTO PORT_TBL VALUES (8080, 65535, 'TCP', 0, 0)");
    Raw_Rows(source, "INSERT INTO USER_EXCPN_TBL (E_USER_NAME) VALUES ('ann')");
    Raw_Rows(source, "UPDATE SETTINGS_TBL SET PWD='Other', CLIENT_OPTIONS=5");
    const QString file = dir.filePath(QStringLiteral("policy.json"));
    ASSERT_EQ(Run({QStringLiteral("policy"), QStringLiteral("export"), file}, source).exit, 0);
    ASSERT_EQ(Run({QStringLiteral("policy"), QStringLiteral("import"), file}).exit, 0);
    EXPECT_EQ(Policy_By_Name(Store()), Policy_By_Name(source));
    // Imported again with --replace, nothing doubles.
    ASSERT_EQ(
        Run({QStringLiteral("policy"), QStringLiteral("import"), file, QStringLiteral("--replace")}).exit, 0);
    EXPECT_EQ(Policy_By_Name(Store()), Policy_By_Name(source));

    QFile f(file);
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    QByteArray bad = f.readAll();
    f.close();
    bad.replace("\"Watchman\"", "\"x\"").replace("\"Other\"", "\"it's\"");
    ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
    f.write(bad);
    f.close();
    Raw_Rows(Store(), "DELETE FROM BL_TBL");
    const QStringList before = Policy_By_Name(Store());
    const Outcome o =
        Run({QStringLiteral("policy"), QStringLiteral("import"), file, QStringLiteral("--replace")});
    EXPECT_EQ(o.exit, 1);
    EXPECT_TRUE(o.err.contains(QStringLiteral("settings.password"))) << o.err.toStdString();
    EXPECT_EQ(Policy_By_Name(Store()), before);
}

TEST_F(AdminTool, CheckNamesWhatIsWrong) {
    EXPECT_EQ(Run({QStringLiteral("check")}).exit, 0);
    Raw_Rows(Store(), "DROP TABLE WL_TBL");
    Raw_Rows(Store(), "DELETE FROM SETTINGS_TBL");
    const Outcome o = Run({QStringLiteral("check")});
    EXPECT_EQ(o.exit, 1);
    EXPECT_TRUE(o.out.contains(QStringLiteral("The table WL_TBL is missing."))) << o.out.toStdString();
    EXPECT_TRUE(o.out.contains(QStringLiteral("SETTINGS_TBL has no row with SETTINGS_ID 1")))
        << o.out.toStdString();
    QFile junk(dir.filePath(QStringLiteral("junk.iil")));
    ASSERT_TRUE(junk.open(QIODevice::WriteOnly));
    junk.write("not a store at all, just text that goes on for a while.........................");
    junk.close();
    EXPECT_EQ(Run({QStringLiteral("check")}, junk.fileName()).exit, 1);
}

TEST_F(AdminTool, ImportReportsWhatThePageKeepsSilent) {
    Ok({Words("users|add|jsmith"), Words("rules|add|--user|jsmith|--list|file|.doc")});
    const QString file = dir.filePath(QStringLiteral("files.txt"));
    QFile f(file);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(".exe\r\n.DOC, .zip\r\nx\r\n.zip\r\n");
    f.write(QByteArray(".a\0b\r\n", 6));
    f.close();
    const QStringList args = Words("rules|import|--user|jsmith|--list|file") << file;
    Outcome o = Run(QStringList(args) << QStringLiteral("--dry-run"));
    EXPECT_EQ(o.exit, 1);
    EXPECT_TRUE(o.out.startsWith(QStringLiteral("2 would be added, 2 duplicate(s), 2 refused")))
        << o.out.toStdString();
    EXPECT_TRUE(o.out.contains(QStringLiteral("line 3: \"x\": Please enter a valid File Extension!.")))
        << o.out.toStdString();
    EXPECT_TRUE(o.out.contains(QStringLiteral("line 5:"))) << o.out.toStdString();
    EXPECT_EQ(Rows("SELECT COUNT(*) FROM FILE_TBL"), QStringList{QStringLiteral("1")});
    o = Run(args);
    EXPECT_EQ(o.exit, 1);
    EXPECT_EQ(Rows("SELECT FILE_EXTN FROM FILE_TBL ORDER BY 1"),
              (QStringList{QStringLiteral(".doc"), QStringLiteral(".exe"), QStringLiteral(".zip")}));
}

struct ScheduleCase {
    const char* name;
    const char* args; // after "schedules|add|--user|jsmith|"
    int exit;
    const char* err;
};

class AdminSchedules : public AdminTool, public ::testing::WithParamInterface<ScheduleCase> {};

// Each scheduler's own rule, judged against a Daily 08:00-12:00 and a Weekly Mon/Wed 13:00-14:00 window.
TEST_P(AdminSchedules, JudgedAsThePagesJudge) {
    Ok({Words("users|add|jsmith")});
    for (const QString& s : {QStringLiteral("internet"), QStringLiteral("application")})
        Ok({Words("schedules|add|--user|jsmith|--type|Daily|--from|08:00|--to|12:00|--scheduler") << s,
            Words("schedules|add|--user|jsmith|--type|Weekly|--from|13:00|--to|14:00|--days|Mon, "
                  "Wed|--scheduler")
                << s});
    const ScheduleCase& c = GetParam();
    const Outcome o = Run(QStringList{QStringLiteral("schedules"), QStringLiteral("add"),
                                      QStringLiteral("--user"), QStringLiteral("jsmith")} +
                          Words(c.args));
    EXPECT_EQ(o.exit, c.exit) << o.err.toStdString();
    EXPECT_TRUE(o.err.contains(QString::fromUtf8(c.err))) << o.err.toStdString();
}

INSTANTIATE_TEST_SUITE_P(
    Cases, AdminSchedules,
    ::testing::Values(
        ScheduleCase{"exact_duplicate", "--scheduler|internet|--type|Daily|--from|08:00|--to|12:00", 1,
                     "Schedule already exist!."},
        ScheduleCase{"overlap_passes_internet", "--scheduler|internet|--type|Daily|--from|09:00|--to|10:00",
                     0, ""},
        ScheduleCase{"overlap_refused_application",
                     "--scheduler|application|--type|Daily|--from|09:00|--to|10:00", 1,
                     "Schedule cannot be overlapped!"},
        ScheduleCase{"touching_passes", "--scheduler|application|--type|Daily|--from|12:00|--to|13:00", 0,
                     ""},
        ScheduleCase{"other_weekday_passes",
                     "--scheduler|application|--type|Weekly|--from|13:00|--to|14:00|--days|Tue", 0, ""},
        ScheduleCase{"to_before_from", "--scheduler|application|--type|Daily|--from|15:00|--to|14:00", 1,
                     "'To' time should be greater than or equal to 'From' time!"},
        ScheduleCase{"weekly_without_days", "--scheduler|internet|--type|Weekly|--from|15:00|--to|16:00", 1,
                     "needs --days"},
        ScheduleCase{"no_time", "--scheduler|internet|--type|Daily|--from|25:00|--to|26:00", 1,
                     "is not a time"}),
    [](const ::testing::TestParamInfo<ScheduleCase>& info) { return std::string(info.param.name); });

TEST_F(AdminTool, TwentyOneWindowsAreOneTooMany) {
    Ok({Words("users|add|jsmith")});
    for (int h = 0; h < 20; ++h)
        Ok({Words("schedules|add|--user|jsmith|--scheduler|application|--type|Daily|--from")
            << QStringLiteral("%1:00").arg(h, 2, 10, QLatin1Char('0')) << QStringLiteral("--to")
            << QStringLiteral("%1:30").arg(h, 2, 10, QLatin1Char('0'))});
    const Outcome o = Run(
        Words("schedules|add|--user|jsmith|--scheduler|application|--type|Daily|--from|22:00|--to|23:00"));
    EXPECT_EQ(o.exit, 1);
    EXPECT_EQ(Rows("SELECT COUNT(*) FROM SCH_TBL"), QStringList{QStringLiteral("20")});
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
    Ok({Words("users|add|jsmith"),
        Words("schedules|add|--user|jsmith|--scheduler|internet|--type|Daily|--from|08:00|--to|12:00"),
        Words("schedules|add|--user|jsmith|--scheduler|internet|--type|Weekly|--from|18:00|--to|20:00|--days|"
              "Mon"),
        Words("schedules|add|--user|jsmith|--scheduler|internet|--type|Monthly|--from|21:00|--to|22:00|--"
              "months|Mar")});
    Raw_Rows(Store(), "UPDATE SETTINGS_TBL SET PROGRAM_MODE=1");
    for (const QString& sql : QString::fromUtf8(GetParam().setup).split(u';', Qt::SkipEmptyParts))
        Raw_Rows(Store(), sql.toUtf8());
    const Outcome o = Run(Words("effective|--user|jsmith|--at") << QString::fromUtf8(GetParam().at));
    EXPECT_EQ(o.exit, 0) << o.err.toStdString();
    EXPECT_TRUE(o.out.contains(QString::fromUtf8(GetParam().says))) << o.out.toStdString();
}

INSTANTIATE_TEST_SUITE_P(
    Cases, AdminEffective,
    ::testing::Values(EffectiveCase{"manual_on", "UPDATE USER_TBL SET SCH_FOR=1, IA_ON_OFF=1",
                                    "2026-01-12 23:00", "Internet: on (manual mode)"},
                      EffectiveCase{"manual_off", "UPDATE USER_TBL SET SCH_FOR=1, IA_ON_OFF=0",
                                    "2026-01-12 09:00", "Internet: off (manual mode)"},
                      EffectiveCase{"daily_inside", "UPDATE USER_TBL SET SCH_FOR=2", "2026-01-13 11:59",
                                    "Internet: on (scheduler, window"},
                      EffectiveCase{"window_end_outside", "UPDATE USER_TBL SET SCH_FOR=2", "2026-01-13 12:00",
                                    "Internet: off (scheduler, outside its 3 window(s))"},
                      EffectiveCase{"weekly_on_its_day", "UPDATE USER_TBL SET SCH_FOR=2", "2026-01-12 19:00",
                                    "Weekly 18:00-20:00 Mon"},
                      EffectiveCase{"weekly_other_day", "UPDATE USER_TBL SET SCH_FOR=2", "2026-01-13 19:00",
                                    "Internet: off"},
                      EffectiveCase{"monthly_in_its_month", "UPDATE USER_TBL SET SCH_FOR=2",
                                    "2026-03-05 21:30", "Monthly 21:00-22:00 Mar"},
                      EffectiveCase{"monthly_other_month", "UPDATE USER_TBL SET SCH_FOR=2",
                                    "2026-04-05 21:30", "Internet: off"},
                      EffectiveCase{"all_user_mode_uses_first_row",
                                    "UPDATE SETTINGS_TBL SET PROGRAM_MODE=0;UPDATE USER_TBL SET SCH_FOR=1, "
                                    "IA_ON_OFF=0 WHERE USER_ID=0",
                                    "2026-01-13 11:00", "Internet: off (manual mode)"},
                      EffectiveCase{"device_lock_in_words", "UPDATE USER_TBL SET DEVICE_LOCK=52",
                                    "2026-01-13 11:00",
                                    "Devices: floppy locked, CD/DVD unlocked, USB mass storage read only"}),
    [](const ::testing::TestParamInfo<EffectiveCase>& info) { return std::string(info.param.name); });

TEST_F(AdminTool, ReportRowsExportAsCsvRecords) {
    Ok({Words("users|add|jsmith")});
    Raw_Rows(
        Store(),
        "INSERT INTO URL_RPT_TBL VALUES ('http://a.example/?q=1,2', 'a.example', 'say \"hi\".exe', 1, 2, "
        "'2026-01-14 10:00:00', '2026-01-14 10:05:00', 1)");
    Raw_Rows(Store(), "INSERT INTO URL_RPT_TBL VALUES ('http://b.example/', 'b.example', 'x.exe', 1, 2, "
                      "'2026-01-16 00:00:00', '2026-01-16 00:01:00', 1)");
    const QString file = dir.filePath(QStringLiteral("url.csv"));
    Ok({Words("reports|export|--type|url|--user|jsmith|--from|2026-01-14|--to|2026-01-15|--format|csv")
        << file});
    QFile f(file);
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    EXPECT_EQ(
        f.readAll(),
        QByteArray("USER,Url Visited,Domain,Application Used,Sent Bits,Received Bits,Start Time,Stop Time\r\n"
                   "jsmith,\"http://a.example/?q=1,2\",a.example,\"say \"\"hi\"\".exe\",1,2,"
                   "2026-01-14 10:00:00,2026-01-14 10:05:00\r\n"));
}

TEST(Csv, FieldsQuotedOnlyWhereRfc4180AsksIt) {
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("t.csv"));
    {
        BufferedFile out(path, BufferedFile::Replace);
        const QString fields[] = {QString(),
                                  QStringLiteral("plain"),
                                  QStringLiteral("a,b"),
                                  QStringLiteral("\"q\""),
                                  QStringLiteral("two\r\nlines"),
                                  QStringLiteral("münchen")};
        Csv_Record(out, fields, 6);
        out.Close();
    }
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    EXPECT_EQ(f.readAll(), QByteArray(",plain,\"a,b\",\"\"\"q\"\"\",\"two\r\nlines\",m\xc3\xbcnchen\r\n"));
}

} // namespace
} // namespace hv
