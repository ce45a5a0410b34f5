// Manage Users on an installation of 10,000 terminal-server users, in one run:
//  - opening the page (the form made and loaded, its list filled from the store) against a bare read of
//    the same rows, prepared once and stepped, into a bare table model shown by a QTreeView: at most 2 times;
//  - importing a 10,000-line list file through the page's own Import (the file dialog answered by the
//    scripted desktop) against a bare prepared insert of the same names in one transaction: at most 3 times.
//
// The machine is shared, so both sides run several rounds, alternating, each import round on new stores,
// and each side's best round counts. Time is the thread's processor time (what the work costs, without the
// waits for a processor that other programs cause), with wall time shown beside it.
#include "BenchCommon.h"
#include "admin/frmManageUsers.h"
#include "console/FormCatalog.h"
#include "setup/StoreSetup.h"
#include "store/modDB.h"
#include "ui/Forms.h"

#include <QAbstractTableModel>
#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTreeView>
#include <sqlite3.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <vector>

namespace {

constexpr int kUsers = 10000;
constexpr int kRounds = 5; // or the first argument
constexpr double kOpenTarget = 2.0;
constexpr double kImportTarget = 3.0;

using hv::bench::Best;
using hv::bench::Stopwatch;
using hv::bench::Timing;

// The names as the import stores them: upper case.
QStringList Names() {
    return hv::bench::Numbered_Texts(kUsers, QStringLiteral("TSUSER%1"));
}

// The reference insert: one statement prepared once, bound per name, one transaction.
int Insert_Names(sqlite3* db, const QStringList& names) {
    sqlite3_exec(db, "BEGIN DEFERRED TRANSACTION MY_TRANS", nullptr, nullptr, nullptr);
    sqlite3_stmt* st = nullptr;
    sqlite3_prepare_v2(db, "INSERT OR IGNORE INTO USER_TBL (USER_NAME) VALUES(?)", -1, &st, nullptr);
    int failed = 0;
    for (const QString& name : names) {
        const QByteArray utf8 = name.toUtf8();
        sqlite3_bind_text(st, 1, utf8.constData(), int(utf8.size()), SQLITE_TRANSIENT);
        failed += sqlite3_step(st) == SQLITE_DONE ? 0 : 1;
        sqlite3_reset(st);
    }
    sqlite3_finalize(st);
    sqlite3_exec(db, "COMMIT TRANSACTION MY_TRANS", nullptr, nullptr, nullptr);
    return failed;
}

bool New_Store(const QString& path, const QStringList* users) {
    QString error;
    if (!hv::Create_Store(path, true, &error)) {
        std::fprintf(stderr, "cannot lay down the store: %s\n", qPrintable(error));
        return false;
    }
    if (!users)
        return true;
    sqlite3* db = hv::bench::Open_Store(path);
    const bool ok = db && Insert_Names(db, *users) == 0;
    sqlite3_close(db);
    return ok;
}

// ---- opening

class BareModel final : public QAbstractTableModel {
public:
    int rowCount(const QModelIndex& parent) const override {
        return parent.isValid() ? 0 : int(names.size());
    }
    int columnCount(const QModelIndex& parent) const override { return parent.isValid() ? 0 : 1; }
    QVariant data(const QModelIndex& index, int role) const override {
        if (role == Qt::DisplayRole)
            return names.at(index.row());
        if (role == Qt::UserRole)
            return QVariant::fromValue(ids[size_t(index.row())]);
        return {};
    }
    QStringList names;
    std::vector<qint64> ids;
};

[[gnu::noinline]] Timing Bare_Open(const QString& path, int* shown) {
    const Stopwatch watch;
    QTreeView view;
    auto* model = new BareModel;
    model->setParent(&view);
    sqlite3* db = hv::bench::Open_Store(path);
    if (!db)
        return {};
    sqlite3_stmt* st = nullptr;
    sqlite3_prepare_v2(db, "SELECT USER_NAME, USER_ID FROM USER_TBL ORDER BY USER_ID", -1, &st, nullptr);
    while (sqlite3_step(st) == SQLITE_ROW) {
        model->names.append(QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(st, 0)),
                                              sqlite3_column_bytes(st, 0)));
        model->ids.push_back(sqlite3_column_int64(st, 1));
    }
    sqlite3_finalize(st);
    sqlite3_close(db);
    view.setModel(model);
    const Timing took = watch.Read();
    *shown = model->rowCount({});
    return took;
}

void Drop_Page() {
    hv::bench::Drop_Page(QStringLiteral("frmManageUsers"));
}

[[gnu::noinline]] Timing Page_Open(int* shown) {
    const Stopwatch watch;
    auto& page = hv::ui::Forms::Get<hv::frmManageUsers>();
    page.Load();
    const Timing took = watch.Read();
    *shown = page.lvwUsers->Count();
    Drop_Page();
    return took;
}

// ---- importing

[[gnu::noinline]] Timing Bare_Import(const QString& path, const QStringList& names) {
    return hv::bench::Timed_Insert(path, [&](sqlite3* db) { return Insert_Names(db, names); });
}

[[gnu::noinline]] Timing Page_Import(hv::ScriptedPlatform& platform, const QString& file, int* shown) {
    auto& page = hv::ui::Forms::Get<hv::frmManageUsers>();
    page.Load();
    hv::bench::Answer_Dialog(platform, file);
    const Stopwatch watch;
    page.cmdImport->click();
    const Timing took = watch.Read();
    *shown = page.lvwUsers->Count();
    Drop_Page();
    return took;
}

void Report(const char* what, const Timing& ref, const Timing& ours, double target, bool met) {
    std::printf("%s: reference %.4f s (wall %.4f s), page %.4f s (wall %.4f s), ratio %.2f (wall %.2f), "
                "target at most %.2f: %s\n",
                what, ref.cpu, ref.wall, ours.cpu, ours.wall, ours.cpu / ref.cpu, ours.wall / ref.wall,
                target, met ? "met" : "MISSED");
}

} // namespace

int main(int argc, char** argv) {
    hv::bench::PageBench bench(argc, argv);
    hv::bench::Stores& stores = bench.stores;
    hv::ScriptedPlatform& platform = stores.platform;
    const QString& refPath = stores.refPath;
    const QString ours = hv::Get_Db_Path();
    const QStringList names = Names();
    const QString file = stores.refDir.filePath(QStringLiteral("users.txt"));
    // Typed as administrators keep such lists, in lower case: the import makes them upper case.
    if (!hv::bench::Write_Lines(file, hv::bench::Numbered_Texts(kUsers, QStringLiteral("tsuser%1")))) {
        std::fprintf(stderr, "cannot write %s\n", qPrintable(file));
        return 1;
    }
    const int rounds = hv::bench::Rounds(argc, argv, kRounds);
    const int expected = kUsers + 1; // with the "[All Users...]" row

    // Opening: both sides read the same store of 10,000 users.
    if (!New_Store(ours, &names) || !New_Store(refPath, &names))
        return 1;
    Timing refOpen, pageOpen;
    for (int round = 1; round <= rounds; ++round) {
        int bareRows = 0, pageRows = 0;
        const Timing r = Bare_Open(refPath, &bareRows);
        const Timing o = Page_Open(&pageRows);
        if (!r.Valid() || !o.Valid() || bareRows != expected || pageRows != expected) {
            std::fprintf(stderr, "an opening failed: %d and %d rows\n", bareRows, pageRows);
            return 1;
        }
        std::printf("open round %d: bare %.4f s (wall %.4f s), page %.4f s (wall %.4f s)\n", round, r.cpu,
                    r.wall, o.cpu, o.wall);
        refOpen = Best(refOpen, r);
        pageOpen = Best(pageOpen, o);
    }

    // Importing: each round on new stores holding the reserved row alone.
    Timing refImport, pageImport;
    for (int round = 1; round <= rounds; ++round) {
        if (!New_Store(ours, nullptr) || !New_Store(refPath, nullptr))
            return 1;
        int shown = 0;
        const Timing r = Bare_Import(refPath, names);
        const Timing o = Page_Import(platform, file, &shown);
        if (!r.Valid() || !o.Valid() || shown != expected || !platform.boxes.empty() ||
            !platform.failure.isEmpty()) {
            std::fprintf(stderr, "an import failed: %d rows shown%s\n", shown,
                         qPrintable(hv::bench::First_Box(platform)));
            return 1;
        }
        std::printf("import round %d: bare %.4f s (wall %.4f s), page %.4f s (wall %.4f s)\n", round, r.cpu,
                    r.wall, o.cpu, o.wall);
        refImport = Best(refImport, r);
        pageImport = Best(pageImport, o);
    }

    const bool openMet = pageOpen.cpu <= kOpenTarget * refOpen.cpu;
    const bool importMet = pageImport.cpu <= kImportTarget * refImport.cpu;
    std::printf("best of %d rounds, %d users, processor time (wall time)\n", rounds, kUsers);
    Report("open Manage Users", refOpen, pageOpen, kOpenTarget, openMet);
    Report("import a user list", refImport, pageImport, kImportTarget, importMet);
    return openMet && importMet ? 0 : 1;
}
