// A list import: 100,000 Add_List_Item calls in one transaction on one connection, against the same
// rows inserted through one SQLite statement prepared once and bound per row. The operation builds its
// statement anew for every row, so this shows what that costs. Target: at least half the reference rate.
#include "BenchCommon.h"
#include "setup/StoreSetup.h"
#include "store/modDBFunctions.h"
#include "testing/ScriptedPlatform.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <sqlite3.h>

#include <algorithm>
#include <cstdio>

namespace {

constexpr int kRows = 100000;
// The machine is shared: each side runs several rounds, alternating, and its best round counts. Each
// round writes a new user's rows, so both files grow alike.
constexpr int kRounds = 3;

QStringList Make_Values() {
    return hv::bench::Numbered_Texts(kRows, QStringLiteral("site%1.example"));
}

double Ours(const QStringList& values, long user) {
    using namespace hv;
    ResultTable table;
    long rows = 0;
    QElapsedTimer timer;
    timer.start();
    const int handle = Db_Open(Get_Db_Path());
    Db_Exec(handle, Sql(kBeginTrans), table, rows);
    int failed = 0;
    for (const QString& v : values)
        failed += Add_List_Item(handle, table, QStringLiteral("BL_URL"), QStringLiteral("BL_TBL"), v, 0, user)
                      ? 0
                      : 1;
    Db_Exec(handle, Sql(kCommitTrans), table, rows);
    Db_Close(handle);
    const double seconds = double(timer.nsecsElapsed()) / 1e9;
    if (failed != 0 || handle == 0) {
        std::fprintf(stderr, "batch: %d rows failed\n", failed);
        return -1;
    }
    return seconds;
}

double Reference(const QString& path, const QStringList& values, long user) {
    sqlite3* db = hv::bench::Open_Store(path);
    if (!db)
        return -1;
    QElapsedTimer timer;
    timer.start();
    const int failed = hv::bench::Insert_Prepared(db, values, user);
    const double seconds = double(timer.nsecsElapsed()) / 1e9;
    sqlite3_close(db);
    return failed == 0 ? seconds : -1;
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    hv::bench::Stores stores;
    hv::ScriptedPlatform& platform = stores.platform;
    const QString& refPath = stores.refPath;
    QString error;
    if (!hv::Create_Store(hv::Get_Db_Path(), false, &error) || !hv::Create_Store(refPath, false, &error)) {
        std::fprintf(stderr, "cannot lay down the store: %s\n", qPrintable(error));
        return 1;
    }
    const QStringList values = Make_Values();
    double ref = 0, ours = 0;
    for (long round = 1; round <= kRounds; ++round) {
        const double r = Reference(refPath, values, round);
        const double o = Ours(values, round);
        if (r <= 0 || o <= 0 || !platform.boxes.empty()) {
            std::fprintf(stderr, "a run failed\n");
            return 1;
        }
        ref = round == 1 ? r : std::min(ref, r);
        ours = round == 1 ? o : std::min(ours, o);
    }
    const double refRate = kRows / ref, ourRate = kRows / ours;
    std::printf("best of %d rounds of %d rows\n", kRounds, kRows);
    std::printf("reference (prepared once, bound per row): %10.0f rows/s (%.3f s)\n", refRate, ref);
    std::printf("Add_List_Item in one transaction:         %10.0f rows/s (%.3f s)\n", ourRate, ours);
    std::printf("ratio %.2f, target at least 0.50: %s\n", ourRate / refRate,
                ourRate >= refRate / 2 ? "met" : "MISSED");
    return ourRate >= refRate / 2 ? 0 : 1;
}
