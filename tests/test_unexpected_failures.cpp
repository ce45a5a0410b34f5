// Nothing a handler lets through ends the process: run-time failures, memory running out and anything
// else are reported through the error path, by a procedure's own target and by the application's event
// dispatch alike. A long import tells its progress in the page's caption and gives the caption back.
#include "core/clsLog.h"
#include "filters/frmWebsiteFilter.h"
#include "platform/Err.h"
#include "testing/ConsoleWorld.h"

#include <QCoreApplication>
#include <QEvent>
#include <QFile>
#include <QTimer>
#include <gtest/gtest.h>

#include <functional>
#include <new>
#include <stdexcept>

using namespace Qt::Literals::StringLiterals;

namespace {

struct Throwing final : QObject {
    std::function<void()> toss;
    bool event(QEvent* e) override {
        if (e->type() == QEvent::User)
            toss();
        return QObject::event(e);
    }
};

TEST(UnexpectedFailures, AreReportedByTheProcedureAndByTheEventDispatch) {
    struct Case {
        const char* name;
        std::function<void()> toss;
        const char* shown;
    };
    for (const Case& c : {
             Case{"run_time_failure", [] { hv::Err().Raise(hv::errnum::FileNotFound); }, "File not found"},
             Case{"memory_runs_out", [] { throw std::bad_alloc(); }, "Out of memory"},
             Case{"library_exception", [] { throw std::runtime_error("x"); }, "Internal error"},
             Case{"anything_else", [] { throw 42; }, "Internal error"},
         }) {
        SCOPED_TRACE(c.name);
        hv::ScriptedPlatform world;
        hv::PlatformScope scope{world};
        hv::Guarded(c.toss);
        Throwing target;
        target.toss = c.toss;
        QEvent event(QEvent::User);
        QCoreApplication::sendEvent(&target, &event);
        ASSERT_EQ(world.boxes.size(), 2u);
        for (const hv::RecordedBox& box : world.boxes) {
            EXPECT_TRUE(box.text.contains(QLatin1String(c.shown))) << qPrintable(box.text);
            EXPECT_EQ(box.style, hv::MsgStyle::Critical);
        }
        EXPECT_EQ(hv::Err().Number, 0);
    }
}

TEST(LongImport, TellsItsProgressInTheCaptionAndGivesItBack) {
    hv::testing::ConsoleWorld console;
    hv::ScriptedPlatform& world = console.desktop;
    QString error;
    ASSERT_TRUE(console.Lay_Store(&error)) << qPrintable(error);
    const QString path = world.Windows_Directory() + u"/list.txt"_s;
    {
        QFile f(path);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        for (int i = 0; i < 1600; ++i)
            f.write(QByteArray("site") + QByteArray::number(i) + ".example\r\n");
    }
    auto& page = console.Open<hv::frmWebsiteFilter>();
    const QString caption = page.windowTitle();

    // Every turn of the event loop the import allows, the caption is read.
    QStringList seen;
    QTimer watch;
    watch.setInterval(0);
    QObject::connect(&watch, &QTimer::timeout, [&] { seen << page.windowTitle(); });
    watch.start();
    hv::FileDialogAnswer answer;
    answer.cancelled = false;
    answer.files = QStringList{path};
    world.dialogAnswers.push_back(answer);
    page.findChild<hv::ui::CommandButton*>(u"cmdURLBLImport"_s)->click();
    watch.stop();

    EXPECT_TRUE(world.boxes.empty());
    ASSERT_GE(seen.size(), 4);
    EXPECT_EQ(seen.front(), caption + u" - Importing 0%"_s);
    // The share of the file read grows with every yield, one every 500 rows: 0, 500, 1000 and 1500 of 1600.
    int before = -1;
    for (const QString& title : seen) {
        ASSERT_TRUE(title.startsWith(caption + u" - Importing "_s)) << qPrintable(title);
        const int percent = title.section(u' ', -1).chopped(1).toInt();
        EXPECT_GE(percent, before);
        before = percent;
    }
    EXPECT_GE(before, 90);
    EXPECT_EQ(page.windowTitle(), caption);
}

} // namespace
