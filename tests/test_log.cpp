// The session log: record layout, the size reset, swallowed failures and the error report path.
#include "core/LogSession.h"
#include "core/clsLog.h"
#include "platform/Err.h"
#include "testing/StoreTest.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace hv {
namespace {

using hv::testing::File_Bytes;
using hv::testing::Write_File;

QByteArray Padded(const QByteArray& s) {
    return s.size() < 80 ? s + QByteArray(80 - s.size(), ' ') : s;
}

const QByteArray kStamp = ": 15-Jan-26 10:00:00";

class LogTest : public ::testing::Test {
protected:
    void SetUp() override { Err().Clear(); }
    void TearDown() override {
        Set_Logger(nullptr);
        Err().Clear();
    }
    QString Path() { return p.App_Path() + u"/halvenorts.log"_s; }

    ScriptedPlatform p;
    PlatformScope scope{p};
};

TEST_F(LogTest, RecordsArePrefixedPaddedStampedAndLedByCrLf) {
    struct Case {
        QByteArray text;
        int level;
        bool time;
        QByteArray line;
    };
    const QByteArray t79(79, 'a'), t80(80, 'b'), t81(81, 'c');
    const Case cases[] = {
        {t79, 0, false, t79 + ' '},
        {t80, 0, false, t80},
        {t81, 0, false, t81},
        {"info", 1, false, Padded("I: info")},
        {"warn", 2, true, Padded("W: warn") + kStamp},
        {"err", 3, true, Padded("E: err") + kStamp},
        {QByteArray(77, 'x'), 3, false, "E: " + QByteArray(77, 'x')}, // the prefix counts towards the 80
        {t81, 1, true, "I: " + t81 + kStamp},
        {"caf\xc3\xa9", 1, false, Padded("I: caf\xc3\xa9") + ' '}, // padding counts characters, not bytes
    };
    Write_File(Path(), "\r\nold line"); // a log left by an earlier session is continued
    clsLog log;
    log.Start_Logging(Path());
    QByteArray expected = "\r\nold line";
    for (const Case& c : cases) {
        log.Log_Event(QString::fromUtf8(c.text), c.level, c.time);
        expected += "\r\n" + c.line;
    }
    EXPECT_EQ(File_Bytes(Path()), expected);
}

TEST_F(LogTest, TimeStampUsesEnglishMonthsAndTwoDigitYear) {
    EXPECT_EQ(clsLog::Format_Time({QDate(2009, 12, 3), QTime(7, 5, 9)}), u"03-Dec-09 07:05:09"_s);
    EXPECT_EQ(clsLog::Format_Time({QDate(2000, 9, 1), QTime(0, 0, 0)}), u"01-Sep-00 00:00:00"_s);
}

TEST_F(LogTest, ResetsOnlyWhenOverOneMebibyteAtTheMomentOfACall) {
    const qint64 limit = 1048576;
    {
        Write_File(Path(), QByteArray(limit, 'z'));
        clsLog log;
        log.Start_Logging(Path());
        log.Log_Event(u"kept"_s, 1, false);
        EXPECT_EQ(QFileInfo(Path()).size(), limit + 2 + 80) << "exactly 1,048,576 bytes is not over";
        log.Log_Event(u"first of new file"_s, 2, true);
        EXPECT_EQ(File_Bytes(Path()), "\r\n" + Padded("W: first of new file") + kStamp);
        log.Log_Event(u"second"_s, 0, false);
        EXPECT_EQ(File_Bytes(Path()).count("\r\n"), 2);
    }
    Write_File(Path(), QByteArray(limit + 1, 'z'));
    clsLog log;
    log.Start_Logging(Path());
    log.Log_Event(u"after"_s, 0, false);
    EXPECT_EQ(File_Bytes(Path()), "\r\n" + Padded("after"));
}

TEST_F(LogTest, FailuresAreSwallowedAndOpeningFailureIsRaised) {
    // A reset whose reopening fails leaves the log quiet for the rest of the session.
    const QString dir = p.App_Path() + u"/logs"_s;
    ASSERT_TRUE(QDir().mkpath(dir));
    const QString path = dir + u"/halvenorts.log"_s;
    Write_File(path, QByteArray(1048577, 'z'));
    clsLog log;
    log.Start_Logging(path);
    ASSERT_TRUE(QDir(dir).removeRecursively());
    EXPECT_NO_THROW(log.Log_Event(u"no place to go"_s, 3, true));
    ASSERT_TRUE(QDir().mkpath(dir));
    EXPECT_NO_THROW(log.Log_Event(u"still quiet"_s, 3, true));
    EXPECT_FALSE(QFile::exists(path));
    EXPECT_TRUE(p.boxes.empty());
    EXPECT_EQ(Err().Number, 0);

    // Opening is the one failure that reaches the caller.
    clsLog bad;
    EXPECT_THROW(bad.Start_Logging(dir), RunTimeFailure);
    EXPECT_EQ(Err().Number, errnum::PathFileAccessError);
    EXPECT_EQ(Err().Description, u"Path/File access error"_s);
}

TEST_F(LogTest, ShowErrorShowsTheBoxBeforeLoggingAndAddsAPendingError) {
    Set_Logger(std::make_unique<clsLog>());
    Logger()->Start_Logging(Path());
    qint64 sizeAtBox = -1;
    p.onEvent = [&](const QString&) { sizeAtBox = QFileInfo(Path()).size(); };

    Err().Set(errnum::FileNotFound);
    Show_Error(u"Opening"_s, true);
    const QString withError = u"Opening: ErrNo=53: ErrDesc=File not found: ErrSrc=HalvenorTS"_s;
    ASSERT_EQ(p.boxes.size(), 1u);
    EXPECT_EQ(p.boxes[0].text, withError);
    EXPECT_EQ(p.boxes[0].style, MsgStyle::Critical);
    EXPECT_EQ(p.boxes[0].buttons, MsgButtons::OK);
    EXPECT_EQ(p.boxes[0].title, u"HalvenorTS"_s);
    EXPECT_EQ(sizeAtBox, 0) << "the line is logged after the box";

    Err().Clear();
    Show_Error(QString(), true); // how a failed typed operation reports: an empty box and an empty line
    Show_Error(u"quiet"_s, false);
    Log_Error(u"no error"_s); // the error part is always there
    ASSERT_EQ(p.boxes.size(), 2u);
    EXPECT_EQ(p.boxes[1].text, QString());
    EXPECT_EQ(File_Bytes(Path()), "\r\n" + Padded("E: " + withError.toUtf8()) + kStamp + "\r\n" +
                                      Padded("E: ") + kStamp + "\r\n" + Padded("E: quiet") + kStamp + "\r\n" +
                                      Padded("E: no error: ErrNo=0: ErrDesc=: ErrSrc=") + kStamp);
}

} // namespace
} // namespace hv
