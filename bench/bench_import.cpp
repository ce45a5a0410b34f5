// A block list import on the website page: a 200,000-line file imported into the black list through the
// page's own Import (the file dialog answered by the scripted desktop), against the same rows inserted
// through one SQLite statement prepared once and bound per row, in one transaction. Target: the page
// takes at most twice the reference's time. Also shows how long the page takes to open on those rows.
//
// The machine is shared, so both sides run several rounds, alternating, each round on a new store, and
// each side's best round counts. Time is taken as processor time of the thread (what the work costs,
// without the waits for a processor that other programs cause) and shown as wall time as well.
#include "BenchCommon.h"
#include "console/frmMain.h"
#include "filters/frmWebsiteFilter.h"
#include "setup/StoreSetup.h"
#include "store/modDB.h"
#include "testing/ScriptedPlatform.h"
#include "ui/Forms.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <sqlite3.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>

namespace {

constexpr int kRows = 200000;
constexpr int kRounds = 5; // or the first argument
constexpr long kUser = 101;

struct Timing {
    double cpu = -1;
    double wall = -1;
};

class Stopwatch final {
public:
    Stopwatch() : m_cpu(Cpu_Seconds()) { m_wall.start(); }
    Timing Read() const { return {Cpu_Seconds() - m_cpu, double(m_wall.nsecsElapsed()) / 1e9}; }

private:
    static double Cpu_Seconds() {
        timespec t{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
        return double(t.tv_sec) + double(t.tv_nsec) / 1e9;
    }
    double m_cpu;
    QElapsedTimer m_wall;
};

QStringList Make_Values() {
    return hv::bench::Numbered_Texts(kRows, QStringLiteral("ads%1.blocklist.example"));
}

bool Write_File(const QString& path, const QStringList& values) {
    QFile f(path);
    if (!f.open(QIODevice::WriteOnly))
        return false;
    for (const QString& v : values)
        f.write(v.toUtf8() + "\r\n");
    return true;
}

// A new store with the user whose list the rounds fill.
bool New_Store(const QString& path, QString* error) {
    if (!hv::Create_Store(path, true, error))
        return false;
    sqlite3* db = nullptr;
    sqlite3_open_v2(path.toUtf8().constData(), &db, SQLITE_OPEN_READWRITE, nullptr);
    const QByteArray insert =
        QStringLiteral("INSERT INTO USER_TBL (USER_ID, USER_NAME) VALUES (%1, 'bench')").arg(kUser).toUtf8();
    const bool ok = sqlite3_exec(db, insert.constData(), nullptr, nullptr, nullptr) == SQLITE_OK;
    sqlite3_close(db);
    if (!ok && error)
        *error = QStringLiteral("cannot add the user");
    return ok;
}

void Drop_Page() {
    if (hv::ui::Form* page = hv::ui::Forms::Find(QStringLiteral("frmWebsiteFilter")))
        page->Unload();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

// The page for the user, opened as the console opens it; how long its load took.
hv::ui::ListView* Black_List(hv::frmWebsiteFilter& page) {
    return page.findChild<hv::ui::ListView*>(QStringLiteral("lvwBlackList"));
}

hv::frmWebsiteFilter& Open_Page(Timing* took = nullptr) {
    hv::frmMain& main = hv::ui::Forms::Get<hv::frmMain>();
    main.Load();
    hv::ui::Set_Tag(main.cboUsers, QString::number(kUser));
    const Stopwatch watch;
    auto& page = hv::ui::Forms::Get<hv::frmWebsiteFilter>();
    page.Load();
    if (took)
        *took = watch.Read();
    return page;
}

[[gnu::noinline]] Timing Page_Import(hv::ScriptedPlatform& platform, const QString& file) {
    hv::frmWebsiteFilter& page = Open_Page();
    hv::FileDialogAnswer answer;
    answer.cancelled = false;
    answer.files = QStringList{file};
    platform.dialogAnswers.push_back(answer);
    const Stopwatch watch;
    page.findChild<hv::ui::CommandButton*>(QStringLiteral("cmdURLBLImport"))->click();
    const Timing took = watch.Read();
    const int shown = Black_List(page)->Count();
    Drop_Page();
    if (shown != kRows) {
        std::fprintf(stderr, "the page shows %d rows, not %d\n", shown, kRows);
        return {};
    }
    return took;
}

[[gnu::noinline]] Timing Reference(const QString& path, const QStringList& values) {
    sqlite3* db = nullptr;
    if (sqlite3_open_v2(path.toUtf8().constData(), &db, SQLITE_OPEN_READWRITE, nullptr) != SQLITE_OK)
        return {};
    const Stopwatch watch;
    const int failed = hv::bench::Insert_Prepared(db, values, kUser);
    const Timing took = watch.Read();
    sqlite3_close(db);
    return failed == 0 ? took : Timing{};
}

Timing Best(const Timing& a, const Timing& b) {
    return {std::min(a.cpu, b.cpu), std::min(a.wall, b.wall)};
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    hv::bench::Stores stores;
    hv::ScriptedPlatform& platform = stores.platform;
    const QString& refPath = stores.refPath;
    const QStringList values = Make_Values();
    const QString file = stores.refDir.filePath(QStringLiteral("blocklist.txt"));
    if (!Write_File(file, values)) {
        std::fprintf(stderr, "cannot write %s\n", qPrintable(file));
        return 1;
    }

    const int rounds = argc > 1 ? std::max(1, std::atoi(argv[1])) : kRounds;
    Timing ref, ours;
    for (int round = 1; round <= rounds; ++round) {
        QString error;
        if (!New_Store(hv::Get_Db_Path(), &error) || !New_Store(refPath, &error)) {
            std::fprintf(stderr, "cannot lay down the store: %s\n", qPrintable(error));
            return 1;
        }
        const Timing r = Reference(refPath, values);
        const Timing o = Page_Import(platform, file);
        if (r.cpu <= 0 || o.cpu <= 0 || !platform.boxes.empty() || !platform.failure.isEmpty()) {
            std::fprintf(stderr, "a run failed%s%s\n", platform.boxes.empty() ? "" : ": ",
                         platform.boxes.empty() ? "" : qPrintable(platform.boxes.front().text));
            return 1;
        }
        std::printf("round %d: reference %.3f s (wall %.3f s), page %.3f s (wall %.3f s)\n", round, r.cpu,
                    r.wall, o.cpu, o.wall);
        ref = round == 1 ? r : Best(ref, r);
        ours = round == 1 ? o : Best(ours, o);
    }
    Timing open;
    Open_Page(&open);
    const int loaded = Black_List(hv::ui::Forms::Get<hv::frmWebsiteFilter>())->Count();
    Drop_Page();

    std::printf("best of %d rounds of %d rows, processor time (wall time)\n", rounds, kRows);
    std::printf("reference (prepared once, bound per row): %6.3f s (%6.3f s) %9.0f rows/s\n", ref.cpu,
                ref.wall, kRows / ref.cpu);
    std::printf("website page import, black list:          %6.3f s (%6.3f s) %9.0f rows/s\n", ours.cpu,
                ours.wall, kRows / ours.cpu);
    std::printf("page opened on %d rows in %.3f s (%.3f s)\n", loaded, open.cpu, open.wall);
    const bool met = ours.cpu <= 2 * ref.cpu && loaded == kRows;
    std::printf("import/reference %.2f (wall %.2f), target at most 2.00: %s\n", ours.cpu / ref.cpu,
                ours.wall / ref.wall, met ? "met" : "MISSED");
    return met ? 0 : 1;
}
