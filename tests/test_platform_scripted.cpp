// The scripted platform's answer rules, the provider library by its ordinals, the provider registration
// and the desktop platform's pieces that need no desktop.
#include "console/modProviders.h"
#include "platform/Err.h"
#include "platform/IniRegistry.h"
#include "platform/ProviderLibrary.h"
#include "platform/ScriptedPlatform.h"
#include "platform/qt/QtPlatform.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

using namespace hv;

class PlatformScripted : public ::testing::Test {
protected:
    ScriptedPlatform world;
    PlatformScope scope{world};
    void TearDown() override { Err().Clear(); }
};

TEST_F(PlatformScripted, OkBoxesAnswerThemselvesAndQuestionsTakeTheQueue) {
    world.m_answers = {MsgAnswer::Yes};
    EXPECT_EQ(MsgBox(QStringLiteral("done"), MsgStyle::Information), MsgAnswer::OK);
    // The OK box did not use the queued answer: the question gets it.
    EXPECT_EQ(MsgBox(QStringLiteral("sure?"), MsgStyle::Question, MsgButtons::YesNo), MsgAnswer::Yes);
    EXPECT_TRUE(world.m_failure.isEmpty());
    ASSERT_EQ(world.m_boxes.size(), 2u);
    EXPECT_EQ(world.m_boxes[0].title, QStringLiteral("HalvenorTS"));
    EXPECT_EQ(world.m_boxes[1].answer, MsgAnswer::Yes);

    // With nothing queued a question is a failure of the scenario, answered No so the program goes on.
    EXPECT_EQ(MsgBox(QStringLiteral("again?"), MsgStyle::Question, MsgButtons::YesNo), MsgAnswer::No);
    EXPECT_EQ(world.m_failure, QStringLiteral("unanswered question: \"again?\""));
    EXPECT_EQ(world.m_boxes.size(), 3u);
}

TEST_F(PlatformScripted, AnOkQueuedForAnOkBoxIsTakenByIt) {
    world.m_answers = {MsgAnswer::OK, MsgAnswer::Yes};
    EXPECT_EQ(MsgBox(QStringLiteral("saved"), MsgStyle::Information), MsgAnswer::OK);
    EXPECT_EQ(MsgBox(QStringLiteral("sure?"), MsgStyle::Question, MsgButtons::YesNo), MsgAnswer::Yes);
    EXPECT_TRUE(world.m_failure.isEmpty()) << world.m_failure.toStdString();
    EXPECT_TRUE(world.m_answers.empty());
}

TEST_F(PlatformScripted, AnAnswerThatDoesNotFitTheQuestionFails) {
    world.m_answers = {MsgAnswer::OK};
    EXPECT_EQ(MsgBox(QStringLiteral("delete?"), MsgStyle::Question, MsgButtons::YesNo), MsgAnswer::No);
    EXPECT_TRUE(world.m_failure.contains(QStringLiteral("does not fit")));
}

TEST_F(PlatformScripted, DialogsHttpAndLaunchesAreRecordedInOrder) {
    FileDialogAnswer two;
    two.cancelled = false;
    two.directory = QStringLiteral("/in");
    two.files = {QStringLiteral("a.txt"), QStringLiteral("b.txt")};
    world.m_dialogAnswers.push_back(two);
    FileDialogRequest req;
    req.title = QStringLiteral("Import");
    EXPECT_EQ(world.FileDialog(req).files, two.files);
    EXPECT_TRUE(world.FileDialog(req).cancelled);
    EXPECT_EQ(world.m_failure, QStringLiteral("unanswered file dialog: \"Import\""));

    world.m_httpAnswers.push_back(HttpAnswer{true, 200, "3.2.18"});
    const HttpAnswer first = world.Http_Get(QStringLiteral("https://h/fns/genfns.php?fn=getver"), 1000);
    EXPECT_TRUE(first.reached);
    EXPECT_EQ(first.body, QByteArray("3.2.18"));
    EXPECT_FALSE(world.Http_Get(QStringLiteral("https://h/x"), 1000).reached);
    EXPECT_EQ(world.m_httpRequests.size(), 2);

    QStringList events;
    world.m_onEvent = [&](const QString& e) { events << e; };
    world.Shell_Open(QStringLiteral("mailto:support@example"));
    world.Start_Program(QStringLiteral("/opt/hvinstall64.exe -ip"), true);
    EXPECT_EQ(world.m_launched, (QStringList{QStringLiteral("mailto:support@example"),
                                             QStringLiteral("/opt/hvinstall64.exe -ip")}));
    ASSERT_EQ(events.size(), 2);
    EXPECT_TRUE(events[1].contains(QStringLiteral("hidden")));
}

TEST_F(PlatformScripted, EachWorldHasItsOwnFolders) {
    ScriptedPlatform other;
    EXPECT_NE(world.Windows_Directory(), other.Windows_Directory());
    EXPECT_NE(world.App_Path(), world.Windows_Directory());
    EXPECT_FALSE(world.Windows_Directory().endsWith(u'/'));
    EXPECT_EQ(world.Now(), QDateTime(QDate(2026, 1, 15), QTime(10, 0, 0)));
}

TEST_F(PlatformScripted, TheProviderGivesTheBaseNameOfAPaddedPath) {
    ProviderLibrary lib;
    const struct {
        QByteArray path;
        const char* name;
    } cases[] = {
        {"C:\\Program Files\\Game\\game.exe", "game.exe"},
        {"/usr/bin/firefox", "firefox"},
        {"C:\\mixed/dirs\\tool.EXE", "tool.EXE"},
        {"plain.exe", "plain.exe"},
        {"C:\\folder\\", ""},
        {"", ""},
        {"C:\\name with blanks.exe", "name with blanks.exe"},
    };
    for (const auto& c : cases) {
        QByteArray buffer = c.path;
        lib.Get_Blocked_Exe_Name(buffer);
        EXPECT_EQ(buffer.size(), ProviderLibrary::kNameBufferSize);
        EXPECT_EQ(Text_Before_Nul(buffer), QLatin1String(c.name)) << c.path.constData();
    }
    // A path of the whole buffer's length without separators: the name keeps room for its NUL.
    QByteArray full(300, 'x');
    lib.Get_Blocked_Exe_Name(full);
    EXPECT_EQ(Text_Before_Nul(full).size(), ProviderLibrary::kNameBufferSize - 1);
    EXPECT_EQ(lib.Install_Provider_Call(), 0);
    EXPECT_EQ(lib.Uninstall_Provider_Call(), 0);
}

TEST_F(PlatformScripted, AMissingProviderRaisesErrorInLoadingDll) {
    world.m_providerMissing = true;
    EXPECT_THROW(ProviderLibrary{}, RunTimeFailure);
    EXPECT_EQ(Err().Number, errnum::ErrorLoadingDll);
    EXPECT_EQ(Err().Description, QStringLiteral("Error in loading DLL"));
}

TEST_F(PlatformScripted, RegistrationWritesAppInitAndUnregistrationOnlyBlanksIt) {
    Registry& reg = world.Registry_Root();
    const QString key = QLatin1String(kAppInitKey);
    reg.Set_String(key, QStringLiteral("AppInit_DLLs"), QStringLiteral("other.dll"));
    Install_Providers();
    EXPECT_EQ(reg.Get_String(key, QStringLiteral("AppInit_DLLs")), QStringLiteral("hvsock.dll"));
    Uninstall_Providers();
    EXPECT_EQ(reg.Get_String(key, QStringLiteral("AppInit_DLLs")), QString());
    EXPECT_EQ(static_cast<IniRegistry&>(reg).Get_Dword(key, QStringLiteral("LoadAppInit_DLLs")), 1u);
    EXPECT_TRUE(world.m_boxes.empty());
    EXPECT_TRUE(world.m_launched.isEmpty()); // a 32-bit system never starts the companion
}

TEST_F(PlatformScripted, ProviderFailuresUseThePlainRunTimeBox) {
    world.m_providerMissing = true;
    for (auto op : {&Install_Providers, &Uninstall_Providers}) {
        world.m_boxes.clear();
        op();
        ASSERT_EQ(world.m_boxes.size(), 1u);
        EXPECT_EQ(world.m_boxes[0].text, QStringLiteral("48: Error in loading DLL"));
        EXPECT_EQ(world.m_boxes[0].style, MsgStyle::Plain);
        EXPECT_EQ(world.m_boxes[0].title, QStringLiteral("halvenorts"));
        EXPECT_EQ(Err().Number, 0); // reported and cleared
    }
    EXPECT_FALSE(world.Registry_Root().Key_Exists(QLatin1String(kAppInitKey)));
}

TEST(PlatformDesktop, FiltersAreWrittenAsQtWantsThem) {
    const struct {
        const char* in;
        const char* out;
    } cases[] = {
        {"Text Files|*.txt|All Files|*.*", "Text Files (*.txt);;All Files (*)"},
        {"HTML Files|*.html", "HTML Files (*.html)"},
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
    first.reset();
    QtPlatform third;
    EXPECT_FALSE(third.Previous_Instance_Running());
}

TEST(PlatformDesktop, TheWindowsDirectoryComesFromTheEnvironmentWithoutTrailingSlash) {
    const QByteArray saved = qgetenv("HALVENORTS_WINDIR");
    QtPlatform p;
    qputenv("HALVENORTS_WINDIR", "/srv/hv/");
    EXPECT_EQ(p.Windows_Directory(), QStringLiteral("/srv/hv"));
    qunsetenv("HALVENORTS_WINDIR");
    EXPECT_EQ(p.Windows_Directory(), QStringLiteral("/var/lib/halvenorts"));
    if (!saved.isNull())
        qputenv("HALVENORTS_WINDIR", saved);
}

} // namespace
