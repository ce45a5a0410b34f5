// A block list import on the website page, shown on the (headless) screen as a user sees it: files of
// 1,000,000 and 4,000,000 lines imported into the black list through the page's own Import (the file
// dialog answered by the scripted desktop), against the same rows inserted through one SQLite statement
// prepared once and bound per row, in one transaction. Targets: the import grows in step with the file
// (4 M lines take at most 4.5 times as long as 1 M), and the 4 M-line import takes at most twice the
// reference's time for the same rows. Also shows how long the page takes to open on those rows.
//
// The machine is shared, so both sides run several rounds, alternating, each round on a new store, and
// each side's best round counts. Time is taken as processor time of the thread (what the work costs,
// without the waits for a processor that other programs cause) and shown as wall time as well.
#include "BenchCommon.h"
#include "console/FormCatalog.h"
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
#include <vector>

namespace {

constexpr int kSmall = 1'000'000;
constexpr int kLarge = 4'000'000;
constexpr int kRounds = 2; // or the first argument
constexpr long kUser = 101;

using hv::bench::Best;
using hv::bench::Stopwatch;
using hv::bench::Timing;

QStringList Make_Values(int rows) {
    return hv::bench::Numbered_Texts(rows, QStringLiteral("ads%1.blocklist.example"));
}

// A new store with the user whose list the rounds fill.
bool New_Store(const QString& path, QString* error) {
    if (!hv::Create_Store(path, true, error))
        return false;
    sqlite3* db = hv::bench::Open_Store(path);
    const QByteArray insert =
        QStringLiteral("INSERT INTO USER_TBL (USER_ID, USER_NAME) VALUES (%1, 'bench')").arg(kUser).toUtf8();
    const bool ok = sqlite3_exec(db, insert.constData(), nullptr, nullptr, nullptr) == SQLITE_OK;
    sqlite3_close(db);
    if (!ok && error)
        *error = QStringLiteral("cannot add the user");
    return ok;
}

void Drop_Page() {
    hv::bench::Drop_Page(QStringLiteral("frmWebsiteFilter"));
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

[[gnu::noinline]] Timing Page_Import(hv::ScriptedPlatform& platform, const QString& file, int rows) {
    hv::frmWebsiteFilter& page = Open_Page();
    // Shown, so that every yield of the import lays out and paints what the list holds.
    page.show();
    QCoreApplication::processEvents();
    hv::bench::Answer_Dialog(platform, file);
    const Stopwatch watch;
    page.findChild<hv::ui::CommandButton*>(QStringLiteral("cmdURLBLImport"))->click();
    const Timing took = watch.Read();
    const int shown = Black_List(page)->Count();
    Drop_Page();
    if (shown != rows) {
        std::fprintf(stderr, "the page shows %d rows, not %d\n", shown, rows);
        return {};
    }
    return took;
}

[[gnu::noinline]] Timing Reference(const QString& path, const QStringList& values) {
    return hv::bench::Timed_Insert(
        path, [&](sqlite3* db) { return hv::bench::Insert_Prepared(db, values, kUser); });
}

struct Size {
    int rows;
    QStringList values;
    QString file;
    Timing ref, ours;
};

} // namespace

int main(int argc, char** argv) {
    hv::bench::PageBench bench(argc, argv);
    hv::bench::Stores& stores = bench.stores;
    hv::ScriptedPlatform& platform = stores.platform;
    const QString& refPath = stores.refPath;
    std::vector<Size> sizes;
    for (int rows : {kSmall, kLarge}) {
        Size size{rows,
                  Make_Values(rows),
                  stores.refDir.filePath(QStringLiteral("blocklist-%1.txt").arg(rows)),
                  {},
                  {}};
        if (!hv::bench::Write_Lines(size.file, size.values)) {
            std::fprintf(stderr, "cannot write %s\n", qPrintable(size.file));
            return 1;
        }
        sizes.push_back(std::move(size));
    }

    const int rounds = hv::bench::Rounds(argc, argv, kRounds);
    for (int round = 1; round <= rounds; ++round) {
        for (Size& size : sizes) {
            QString error;
            if (!New_Store(hv::Get_Db_Path(), &error) || !New_Store(refPath, &error)) {
                std::fprintf(stderr, "cannot lay down the store: %s\n", qPrintable(error));
                return 1;
            }
            const Timing r = Reference(refPath, size.values);
            const Timing o = Page_Import(platform, size.file, size.rows);
            if (r.cpu <= 0 || o.cpu <= 0 || !platform.boxes.empty() || !platform.failure.isEmpty()) {
                std::fprintf(stderr, "a run failed%s\n", qPrintable(hv::bench::First_Box(platform)));
                return 1;
            }
            std::printf("round %d, %d rows: reference %.3f s (wall %.3f s), page %.3f s (wall %.3f s)\n",
                        round, size.rows, r.cpu, r.wall, o.cpu, o.wall);
            std::fflush(stdout);
            size.ref = round == 1 ? r : Best(size.ref, r);
            size.ours = round == 1 ? o : Best(size.ours, o);
        }
    }
    Timing open;
    Open_Page(&open);
    const int loaded = Black_List(hv::ui::Forms::Get<hv::frmWebsiteFilter>())->Count();
    Drop_Page();

    std::printf("best of %d rounds, processor time (wall time)\n", rounds);
    for (const Size& size : sizes) {
        std::printf(
            "%d rows: reference (prepared once, bound per row) %6.3f s (%6.3f s), website page import "
            "%6.3f s (%6.3f s), %9.0f rows/s\n",
            size.rows, size.ref.cpu, size.ref.wall, size.ours.cpu, size.ours.wall, size.rows / size.ours.cpu);
    }
    const Size& small = sizes.front();
    const Size& large = sizes.back();
    std::printf("page opened on %d rows in %.3f s (%.3f s)\n", loaded, open.cpu, open.wall);
    const double growth = large.ours.cpu / small.ours.cpu;
    const double overRef = large.ours.cpu / large.ref.cpu;
    const bool grows = growth <= 4.5;
    const bool fast = overRef <= 2.0;
    std::printf("import 4 M / 1 M: %.2f (wall %.2f), target at most 4.50: %s\n", growth,
                large.ours.wall / small.ours.wall, grows ? "met" : "MISSED");
    std::printf("import/reference at 4 M: %.2f (wall %.2f), target at most 2.00: %s\n", overRef,
                large.ours.wall / large.ref.wall, fast ? "met" : "MISSED");
    hv::Set_Session(nullptr);
    const bool met = grows && fast && loaded == large.rows;
    return met ? 0 : 1;
}
