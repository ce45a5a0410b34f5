// The store as the console finds it on a busy or damaged server.
//
// Another process holds the store (the enforcement components read it all the time, and write report rows)
// while the rule pages add, remove and import: whatever reaches the store or not, the list shows afterwards
// exactly what is stored, and a write that did not reach the store is reported.
#include "filters/frmPortFilter.h"
#include "filters/frmWebsiteFilter.h"
#include "testing/ConsoleWorld.h"
#include "testing/StoreTest.h"
#include "ui/Controls.h"
#include "ui/Forms.h"
#include "ui/ListView.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QPushButton>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace hv {
namespace {

constexpr auto& Query = hv::testing::Raw_Rows;

void Lay_Store(const QString& store) {
    QString error;
    ASSERT_TRUE(Create_Store(store, true, &error)) << qPrintable(error);
}

// A second process holding a lock on the store until it goes.
class Holder final {
public:
    Holder(const char* mode, const QString& path) {
        m_process.start(QStringLiteral(HV_STORE_HOLDER), {QLatin1String(mode), path});
        m_ready = m_process.waitForReadyRead(10000) && m_process.readLine().trimmed() == "ready";
    }
    ~Holder() {
        m_process.closeWriteChannel();
        if (!m_process.waitForFinished(10000))
            m_process.kill();
    }
    bool Ready() const { return m_ready; }

private:
    QProcess m_process;
    bool m_ready = false;
};

// A rule page (the website filter unless told) open on a store of the test's making, in All User Mode.
class RulePage final {
public:
    hv::testing::ConsoleWorld world;
    ScriptedPlatform& desktop = world.desktop;
    const QString store = world.store;

    template <class Page = frmWebsiteFilter> void Open(const char* listName = "lvwBlackList") {
        m_page = &world.Open<Page>();
        list = m_page->findChild<ui::ListView*>(QLatin1String(listName));
    }
    void Click(const char* button) { m_page->findChild<QAbstractButton*>(QLatin1String(button))->click(); }
    void Add(const QString& url) {
        m_page->findChild<ui::TextBox*>(u"txtBlackUrl"_s)->Set_Text(url);
        Click("cmdBlackAdd");
    }
    QStringList Shown() const {
        QStringList shown;
        for (int i = 1; i <= list->Count(); ++i)
            shown << list->Text(i);
        std::sort(shown.begin(), shown.end());
        return shown;
    }
    QStringList Stored() const { return Query(store, "SELECT BL_URL FROM BL_TBL ORDER BY BL_URL"); }
    // Whether some critical box said this.
    bool Reported(const QString& words) const {
        return std::any_of(desktop.boxes.begin(), desktop.boxes.end(), [&](const RecordedBox& b) {
            return b.style == MsgStyle::Critical && b.text.contains(words);
        });
    }

    ui::ListView* list = nullptr;

private:
    ui::Form* m_page = nullptr;
};

enum class Operation { Add, Remove, Import };

struct Case {
    const char* journal; // the store's journal mode: "WAL" as laid down now, "DELETE" as an older store
    const char* lock;    // what the other process holds
    Operation operation;
    bool stored; // whether the change reaches the store
};

std::string Case_Name(const ::testing::TestParamInfo<Case>& info) {
    static const char* const operations[] = {"Add", "Remove", "Import"};
    return std::string(info.param.journal) + '_' + info.param.lock + '_' +
           operations[int(info.param.operation)];
}

class StoreContention : public ::testing::TestWithParam<Case> {};

TEST_P(StoreContention, TheListShowsWhatIsStored) {
    const Case& c = GetParam();
    RulePage w;
    Lay_Store(w.store);
    Query(w.store, u"PRAGMA journal_mode=%1"_s.arg(QLatin1String(c.journal)).toUtf8().constData());
    Query(w.store, "INSERT INTO BL_TBL (BL_URL) VALUES ('keep.example.com'), ('drop.example.com')");
    const QString listFile = w.desktop.App_Path() + u"/list.txt"_s;
    hv::testing::Write_File(listFile, "one.example.com\r\ntwo.example.com\r\nthree.example.com\r\n");
    w.Open();
    ASSERT_EQ(w.list->Count(), 2);
    const QStringList before = w.Stored();
    {
        const Holder holder(c.lock, w.store);
        ASSERT_TRUE(holder.Ready());
        switch (c.operation) {
        case Operation::Add:
            w.Add(u"new.example.com"_s);
            break;
        case Operation::Remove:
            w.list->User_Select({2});
            w.desktop.answers.push_back(MsgAnswer::Yes);
            w.Click("cmdBlackRemove");
            break;
        case Operation::Import:
            w.desktop.dialogAnswers.push_back({.cancelled = false, .directory = {}, .files = {listFile}});
            w.Click("cmdURLBLImport");
            break;
        }
    }
    EXPECT_TRUE(w.desktop.failure.isEmpty()) << qPrintable(w.desktop.failure);
    EXPECT_EQ(w.Shown(), w.Stored());
    EXPECT_EQ(w.Stored() != before, c.stored);
    // A change that did not reach the store was reported in SQLite's words.
    EXPECT_EQ(w.Reported(u"database is locked"_s), !c.stored);
}

// In write-ahead-log mode a reader blocks nothing. An older store in rollback-journal mode lets the
// statements run under a reader and refuses the commit; a writer refuses the statements themselves.
INSTANTIATE_TEST_SUITE_P(Pages, StoreContention,
                         ::testing::Values(Case{"WAL", "read", Operation::Add, true},
                                           Case{"WAL", "read", Operation::Remove, true},
                                           Case{"WAL", "read", Operation::Import, true},
                                           Case{"WAL", "write", Operation::Add, false},
                                           Case{"WAL", "write", Operation::Remove, false},
                                           Case{"WAL", "write", Operation::Import, false},
                                           Case{"DELETE", "read", Operation::Add, false},
                                           Case{"DELETE", "read", Operation::Remove, false},
                                           Case{"DELETE", "read", Operation::Import, false},
                                           Case{"DELETE", "write", Operation::Remove, false}),
                         Case_Name);

// The port page's Remove in an older store under a reader: the commit fails, and the list comes back as
// stored, with its column narrowed for the scroll bar once, as at load.
TEST(StoreContentionPorts, AFailedRemoveReloadsTheListWithItsColumnsAsAtLoad) {
    RulePage w;
    Lay_Store(w.store);
    Query(w.store, "PRAGMA journal_mode=DELETE");
    Query(w.store,
          "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 22) "
          "INSERT INTO PORT_TBL (PORT_NO, FILTER_TYPE, PROTOCOL_TYPE) SELECT 9000 + i, 3, 'SMTP' FROM n");
    w.Open<frmPortFilter>("lvwPortFilter");
    ASSERT_EQ(w.list->Count(), 22);
    const int width = w.list->Column_Width(2);
    {
        const Holder holder("read", w.store);
        ASSERT_TRUE(holder.Ready());
        w.list->User_Select({3, 4});
        w.desktop.answers.push_back(MsgAnswer::Yes);
        w.Click("cmdFRemove");
    }
    EXPECT_TRUE(w.Reported(u"database is locked"_s));
    EXPECT_EQ(Query(w.store, "SELECT COUNT(*) FROM PORT_TBL"), QStringList{u"22"_s});
    EXPECT_EQ(w.list->Count(), 22);
    EXPECT_EQ(w.list->Column_Width(2), width);
}

// What the console finds in place of a good store. Each is reported, and the page's Add loses nothing:
// the file (or what stands in its place) is as it was.
struct Fault {
    const char* name;
    std::function<void(const QString& store)> lay;
    const char* report; // what a critical box says; "" for the empty report
    bool modes;         // relies on file modes, which root does not obey
};

class StoreFaults : public ::testing::TestWithParam<Fault> {
protected:
    // Root writes through file modes, so the test runs again in a child process as the user nobody.
    static void Run_As_Nobody() {
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        QProcess child;
        child.setProcessChannelMode(QProcess::MergedChannels);
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(u"HOME"_s, u"/tmp"_s);
        child.setProcessEnvironment(env);
        child.start(u"setpriv"_s, {u"--reuid=65534"_s, u"--regid=65534"_s, u"--clear-groups"_s,
                                   QCoreApplication::applicationFilePath(),
                                   u"--gtest_filter=%1.%2"_s.arg(QLatin1String(info->test_suite_name()),
                                                                 QLatin1String(info->name()))});
        if (!child.waitForStarted())
            GTEST_SKIP() << "running as root, and setpriv is not there to run this case as another user";
        ASSERT_TRUE(child.waitForFinished(120000));
        const QString out = QString::fromLocal8Bit(child.readAll());
        // setpriv's own failures (126, 127): the test program is out of that user's reach.
        if (child.exitCode() == 126 || child.exitCode() == 127)
            GTEST_SKIP() << "running as root, and nobody cannot run the test program: " << qPrintable(out);
        EXPECT_EQ(child.exitCode(), 0) << qPrintable(out);
        EXPECT_TRUE(out.contains(QLatin1String("[  PASSED  ] 1 test"))) << qPrintable(out);
    }
};

TEST_P(StoreFaults, AreReportedAndLoseNothing) {
    const Fault& fault = GetParam();
    if (fault.modes && ::geteuid() == 0) {
        Run_As_Nobody();
        return;
    }
    RulePage w;
    fault.lay(w.store);
    const QFileInfo before(w.store);
    const QByteArray bytes = hv::testing::File_Bytes(w.store);
    w.Open();
    w.Add(u"new.example.com"_s);

    EXPECT_TRUE(w.desktop.failure.isEmpty()) << qPrintable(w.desktop.failure);
    const bool reported = *fault.report ? w.Reported(QLatin1String(fault.report))
                                        : std::any_of(w.desktop.boxes.begin(), w.desktop.boxes.end(),
                                                      [](const RecordedBox& b) { return b.text.isEmpty(); });
    QStringList boxes;
    for (const RecordedBox& b : w.desktop.boxes)
        boxes << b.text;
    EXPECT_TRUE(reported) << fault.name << ": " << qPrintable(boxes.join(QLatin1String(" / ")));
    const QFileInfo after(w.store);
    EXPECT_EQ(after.exists(), before.exists());
    EXPECT_EQ(after.isDir(), before.isDir());
    EXPECT_EQ(hv::testing::File_Bytes(w.store), bytes);
    EXPECT_EQ(w.list->Count(), 0);
    // The folder is writable again, so the test's own clean-up can go through.
    QFile::setPermissions(w.desktop.Windows_Directory(),
                          QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

INSTANTIATE_TEST_SUITE_P(
    Pages, StoreFaults,
    ::testing::Values(Fault{"missing", [](const QString&) {}, "File not found", false},
                      Fault{"empty", [](const QString& s) { hv::testing::Write_File(s, {}); }, "", false},
                      Fault{"directory", [](const QString& s) { QDir().mkpath(s); }, "Path/File access error",
                            false},
                      Fault{"corrupt",
                            [](const QString& s) {
                                hv::testing::Write_File(s, QByteArray(8192, 'x').prepend("not a store\n"));
                            },
                            "file is not a database", false},
                      Fault{"missing_table",
                            [](const QString& s) {
                                Lay_Store(s);
                                Query(s, "DROP TABLE BL_TBL");
                            },
                            "no such table: BL_TBL", false},
                      Fault{"read_only_file",
                            [](const QString& s) {
                                Lay_Store(s);
                                QFile::setPermissions(s, QFile::ReadOwner);
                            },
                            "attempt to write a readonly database", true},
                      Fault{"read_only_folder",
                            [](const QString& s) {
                                Lay_Store(s);
                                QFile::setPermissions(QFileInfo(s).absolutePath(),
                                                      QFile::ReadOwner | QFile::ExeOwner);
                            },
                            "attempt to write a readonly database", true}),
    [](const ::testing::TestParamInfo<Fault>& info) { return std::string(info.param.name); });

} // namespace
} // namespace hv
