// The scenario driver tells a failing scenario by file, line and reason, and a file it cannot read by
// exit status 2; a scenario that holds exits 0.
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

struct DriveRun {
    int status = -1;
    QString out; // stdout and stderr together
};

class DriveFailures : public ::testing::Test {
protected:
    QTemporaryDir dir;

    QString Write(const char* name, const QByteArray& text) {
        const QString path = dir.path() + u'/' + QLatin1String(name);
        QFile f(path);
        EXPECT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(text);
        return path;
    }

    DriveRun Run(const QStringList& args) {
        QProcess drive;
        drive.setProcessChannelMode(QProcess::MergedChannels);
        drive.start(QStringLiteral(HV_DRIVE_TOOL), args);
        EXPECT_TRUE(drive.waitForFinished(120000));
        return {drive.exitStatus() == QProcess::NormalExit ? drive.exitCode() : -1,
                QString::fromLocal8Bit(drive.readAll())};
    }
};

TEST_F(DriveFailures, EachFailureNamesFileLineAndReason) {
    const struct {
        const char* name;
        QByteArray text;
        int status; // 1: an expectation or action failed; 2: the file cannot be parsed
        const char* message;
    } cases[] = {
        {"nocontrol.scenario", "store default\nstart\nclick frmLogin.cmdNothing\n", 1,
         ":3: form frmLogin has no control cmdNothing"},
        {"question.scenario",
         "store default\nstart\ntype frmLogin.txtPassword \"Watchman\"\nkey frmLogin.txtPassword Enter\n"
         "# the main console asks before it registers\nmenu frmMain.mnuRegisterFilters\n",
         1, ":6: unanswered question: \"This will re-register the filters."},
        {"wrongbox.scenario", "store none\nstart\nexpect msgbox exclamation ok \"File not found\"\n", 1,
         ":3: the next message box is critical ok"},
        {"leftover.scenario", "store none\nstart\n# nothing expected\n", 1,
         ":3: a message box was shown and never expected: \"File not found: ErrNo=53"},
        {"property.scenario", "store default\nstart\nexpect frmLogin.cmdLogin.caption = \"Log in\"\n", 1,
         ":3: frmLogin.cmdLogin.caption is \"Login\", not \"Log in\""},
        {"ended.scenario", "store default\nstart\nexpect ended\n", 1,
         ":3: the program has not ended: forms left: frmLogin"},
        // A line the driver cannot read is found before anything runs.
        {"unknown.scenario", "store default\nstart\n\nfrobnicate frmLogin\n", 2,
         ":4: unknown command \"frobnicate\""},
        {"expectation.scenario", "store default\nstart\nexpect shwon frmLogin\n", 2,
         ":3: unknown expectation \"shwon\""},
        {"open.scenario", "store default\n\nstart \"-ip\n", 2, ":3: a quoted word is not closed"},
        {"backslash.scenario", "# fine\nwrite \"a.txt\" \"bad \\", 2,
         ":2: a backslash at the end of the line"},
    };
    for (const auto& c : cases) {
        const QString file = Write(c.name, c.text);
        const DriveRun r = Run({file});
        EXPECT_EQ(r.status, c.status) << c.name << "\n" << r.out.toStdString();
        EXPECT_TRUE(r.out.contains(file + QLatin1String(c.message))) << c.name << "\n" << r.out.toStdString();
    }
}

TEST_F(DriveFailures, FilesRunInWorldsOfTheirOwnAsAWindowsEditorSavesThem) {
    // The first file leaves a store, a log and a file; the second, run after it, sees none of them.
    // It has a byte order mark, CR LF line ends and keywords in other case.
    const QString first = Write(
        "first.scenario", "store default\nwrite \"left.txt\" \"x\"\nstart\nclose frmLogin\nexpect ended\n");
    const QString second = Write("second.scenario", "\xEF\xBB\xBF"
                                                    "expect nolog\r\nexpect nofile \"left.txt\"\r\nstart\r\n"
                                                    "# a comment\r\n\r\n"
                                                    "expect msgbox critical ok ~\"File not found\"\r\n"
                                                    "expect msgbox critical ok ~\"File not found\"\r\n"
                                                    "CLOSE frmLogin\r\nExpect Ended\r\n");
    const DriveRun r = Run({first, second});
    EXPECT_EQ(r.status, 0) << r.out.toStdString();
}

TEST_F(DriveFailures, TheTranscriptShowsCommandsBoxesAndLogLines) {
    const QString file =
        Write("verbose.scenario", "store default\nstart\nclick frmLogin.cmdLogin\n"
                                  "expect msgbox exclamation ok \"Please enter a valid Password!\"\n"
                                  "click frmLogin.lblHomeSite\nclose frmLogin\n");
    const DriveRun r = Run({u"-v"_s, file});
    EXPECT_EQ(r.status, 0) << r.out.toStdString();
    for (const char* piece :
         {":3: click frmLogin.cmdLogin", "msgbox exclamation ok \"Please enter a valid Password!\"",
          "open \"https://", "log: I: Application Closing", "log: Stop"})
        EXPECT_TRUE(r.out.contains(QLatin1String(piece))) << piece << "\n" << r.out.toStdString();
}

TEST_F(DriveFailures, EscapesWriteExactBytes) {
    const QString file =
        Write("bytes.scenario", "write \"sub/in.txt\" \"a\\r\\n\\x00\\xff\\t\\\"q\\\\\"\n"
                                "expect file \"sub/in.txt\" \"a\\r\\n\\0\\xFF\\t\\\"q\\\\\"\n"
                                "expect filecontains \"sub/in.txt\" \"\\xff\\t\"\n"
                                // A backslash before anything that is not an escape stands for itself.
                                "write \"key.txt\" \"SOFTWARE\\Microsoft\\Windows NT\\\\x\"\n"
                                "expect file \"key.txt\" \"SOFTWARE\\\\Microsoft\\\\Windows NT\\\\x\"\n"
                                "expect file \"key.txt\" \"\\x01\"\n");
    const DriveRun r = Run({file});
    EXPECT_EQ(r.status, 1) << r.out.toStdString();
    EXPECT_TRUE(r.out.contains(file + QLatin1String(":6: "))) << r.out.toStdString();
    EXPECT_TRUE(r.out.contains(QLatin1String("; expected \"\\x01\""))) << r.out.toStdString();
}

} // namespace
