// The scripted platform's answer rules, the provider library's name function and the desktop platform's
// pieces that need no desktop.
#include "platform/Err.h"
#include "platform/ProviderLibrary.h"
#include "platform/qt/QtPlatform.h"
#include "testing/ScriptedPlatform.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace {

using namespace hv;

class PlatformScripted : public ::testing::Test {
protected:
    ScriptedPlatform world;
    PlatformScope scope{world};
    void TearDown() override { Err().Clear(); }
};

TEST_F(PlatformScripted, OkBoxesAnswerThemselvesAndQuestionsTakeTheQueue) {
    world.answers = {MsgAnswer::Yes};
    EXPECT_EQ(MsgBox(u"done"_s, MsgStyle::Information), MsgAnswer::OK);
    // The OK box did not use the queued answer: the question gets it.
    EXPECT_EQ(MsgBox(u"sure?"_s, MsgStyle::Question, MsgButtons::YesNo), MsgAnswer::Yes);
    // An OK queued for an OK box is taken by it, not left for the next question.
    world.answers = {MsgAnswer::OK, MsgAnswer::Yes};
    EXPECT_EQ(MsgBox(u"saved"_s, MsgStyle::Information), MsgAnswer::OK);
    EXPECT_EQ(MsgBox(u"sure?"_s, MsgStyle::Question, MsgButtons::YesNo), MsgAnswer::Yes);
    EXPECT_TRUE(world.failure.isEmpty()) << world.failure.toStdString();
    ASSERT_EQ(world.boxes.size(), 4u);
    EXPECT_EQ(world.boxes[0].title, u"HalvenorTS"_s);
    EXPECT_EQ(world.boxes[1].answer, MsgAnswer::Yes);

    // With nothing queued a question is a failure of the scenario, answered No so the program goes on.
    EXPECT_EQ(MsgBox(u"again?"_s, MsgStyle::Question, MsgButtons::YesNo), MsgAnswer::No);
    EXPECT_EQ(world.failure, u"unanswered question: \"again?\""_s);
    world.failure.clear();
    world.answers = {MsgAnswer::OK};
    EXPECT_EQ(MsgBox(u"delete?"_s, MsgStyle::Question, MsgButtons::YesNo), MsgAnswer::No);
    EXPECT_TRUE(world.failure.contains(u"does not fit"_s));
}

TEST_F(PlatformScripted, TheProviderGivesTheBaseNameOfAPaddedPath) {
    ProviderLibrary lib;
    const struct {
        QByteArray path;
        const char* name;
    } cases[] = {
        {"C:\\Program Files\\Game\\game.exe", "game.exe"},
        {"C:\\mixed/dirs\\tool.EXE", "tool.EXE"},
        {"C:\\folder\\", ""},
        {"", ""},
    };
    for (const auto& c : cases) {
        QByteArray buffer = c.path;
        lib.Get_Blocked_Exe_Name(buffer);
        EXPECT_EQ(buffer.size(), ProviderLibrary::kNameBufferSize);
        EXPECT_EQ(Text_Before_Nul(buffer), QLatin1String(c.name)) << c.path.constData();
    }
    // A path longer than the buffer without separators: the name keeps room for its NUL.
    QByteArray full(300, 'x');
    lib.Get_Blocked_Exe_Name(full);
    EXPECT_EQ(Text_Before_Nul(full).size(), ProviderLibrary::kNameBufferSize - 1);
}

TEST(PlatformDesktop, FiltersAreWrittenAsQtWantsThem) {
    const struct {
        const char* in;
        const char* out;
    } cases[] = {
        {"Text Files|*.txt|All Files|*.*", "Text Files (*.txt);;All Files (*)"},
        {"Programs|*.exe;*.com", "Programs (*.exe *.com)"},
        {"", ""},
    };
    for (const auto& c : cases)
        EXPECT_EQ(QtPlatform::Qt_Filter(QLatin1String(c.in)), QLatin1String(c.out)) << c.in;
}

TEST(PlatformDesktop, TheInstanceLockIsHeldUntilItsHolderGoes) {
    auto first = std::make_unique<QtPlatform>();
    if (first->Previous_Instance_Running())
        GTEST_SKIP() << "a console is running for this user";
    EXPECT_FALSE(first->Previous_Instance_Running()); // asking again in the holder is no second instance
    {
        QtPlatform second;
        EXPECT_TRUE(second.Previous_Instance_Running());
    }
    {
        // A second login of the same user with another environment finds the same lock.
        const QByteArray runtime = qgetenv("XDG_RUNTIME_DIR"), temp = qgetenv("TMPDIR");
        const QTemporaryDir elsewhere;
        qputenv("XDG_RUNTIME_DIR", elsewhere.path().toLocal8Bit());
        qputenv("TMPDIR", elsewhere.path().toLocal8Bit());
        QtPlatform second;
        EXPECT_TRUE(second.Previous_Instance_Running());
        for (const auto& [name, value] : {std::pair{"XDG_RUNTIME_DIR", runtime}, std::pair{"TMPDIR", temp}}) {
            if (value.isNull())
                qunsetenv(name);
            else
                qputenv(name, value);
        }
    }
    first.reset();
    QtPlatform third;
    EXPECT_FALSE(third.Previous_Instance_Running());
}

TEST(PlatformDesktop, TheWindowsDirectoryComesFromTheEnvironmentWithoutTrailingSlash) {
    const QByteArray saved = qgetenv("HALVENORTS_WINDIR");
    QtPlatform p;
    qputenv("HALVENORTS_WINDIR", "/srv/hv/");
    EXPECT_EQ(p.Windows_Directory(), u"/srv/hv"_s);
    qunsetenv("HALVENORTS_WINDIR");
    EXPECT_EQ(p.Windows_Directory(), u"/var/lib/halvenorts"_s);
    if (!saved.isNull())
        qputenv("HALVENORTS_WINDIR", saved);
}

} // namespace
