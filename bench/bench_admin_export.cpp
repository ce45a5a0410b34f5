// halvenorts-admin reports export of 10,000,000 URL rows to CSV against `sqlite3 -csv` running the same
// query into a file: peak memory under 50 MB and at most twice the time (processor time of the child
// processes, user and system; wall time shown too).
//
//   bench_admin_export [ROWS]
#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <sqlite3.h>

#include <cstdio>
#include <cstdlib>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr long kRows = 10'000'000;
constexpr double kTimeLimit = 2.0;
constexpr long kMemoryLimitKb = 50 * 1024;

struct Run {
    double cpu = -1;
    double wall = -1;
    long peakKb = 0;
    int exit = -1;
};

// Runs a program to its end with its output in a file, measuring what it alone used.
Run Measure(const char* program, const std::vector<std::string>& args, const QString& output) {
    QElapsedTimer wall;
    wall.start();
    const pid_t pid = fork();
    if (pid == 0) {
        if (!output.isEmpty() && !freopen(QFile::encodeName(output).constData(), "w", stdout))
            _exit(126);
        std::vector<char*> argv{const_cast<char*>(program)};
        for (const std::string& a : args)
            argv.push_back(const_cast<char*>(a.c_str()));
        argv.push_back(nullptr);
        execvp(program, argv.data());
        _exit(127);
    }
    int status = 0;
    rusage usage{};
    wait4(pid, &status, 0, &usage);
    Run r;
    r.wall = double(wall.nsecsElapsed()) / 1e9;
    r.cpu = double(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
            double(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
    r.peakKb = usage.ru_maxrss;
    r.exit = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return r;
}

bool Fill(const QString& path, long rows) {
    sqlite3* db = nullptr;
    if (sqlite3_open(QFile::encodeName(path).constData(), &db) != SQLITE_OK)
        return false;
    sqlite3_exec(
        db, "PRAGMA synchronous=OFF; BEGIN; INSERT INTO USER_TBL (USER_ID, USER_NAME) VALUES (1, 'jsmith')",
        nullptr, nullptr, nullptr);
    sqlite3_stmt* insert = nullptr;
    sqlite3_prepare_v2(db, "INSERT INTO URL_RPT_TBL VALUES (?, ?, 'iexplore.exe', ?, ?, ?, ?, 1)", -1,
                       &insert, nullptr);
    char url[96], domain[48], start[24], stop[24];
    for (long i = 0; i < rows; ++i) {
        std::snprintf(domain, sizeof domain, "site%ld.example.com", i % 5000);
        std::snprintf(url, sizeof url, "http://%s/page/%ld?q=a,b", domain, i);
        const long s = i % 86000;
        std::snprintf(start, sizeof start, "2026-01-%02ld %02ld:%02ld:%02ld", 1 + (i / 86000) % 28, s / 3600,
                      s / 60 % 60, s % 60);
        std::snprintf(stop, sizeof stop, "2026-01-%02ld %02ld:%02ld:%02ld", 1 + (i / 86000) % 28, s / 3600,
                      s / 60 % 60, (s + 1) % 60);
        sqlite3_bind_text(insert, 1, url, -1, SQLITE_STATIC);
        sqlite3_bind_text(insert, 2, domain, -1, SQLITE_STATIC);
        sqlite3_bind_int64(insert, 3, i * 7 % 100000);
        sqlite3_bind_int64(insert, 4, i * 13 % 1000000);
        sqlite3_bind_text(insert, 5, start, -1, SQLITE_STATIC);
        sqlite3_bind_text(insert, 6, stop, -1, SQLITE_STATIC);
        sqlite3_step(insert);
        sqlite3_reset(insert);
    }
    sqlite3_finalize(insert);
    const bool ok = sqlite3_exec(db, "COMMIT", nullptr, nullptr, nullptr) == SQLITE_OK;
    sqlite3_close(db);
    return ok;
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const long rows = argc > 1 ? std::atol(argv[1]) : kRows;
    QTemporaryDir dir;
    const QString store = dir.filePath(QStringLiteral("hvpolicy.iil"));
    if (QProcess::execute(QStringLiteral(HV_SETUP_TOOL), {QStringLiteral("create"), dir.path()}) != 0 ||
        !Fill(store, rows)) {
        std::fprintf(stderr, "cannot lay down the store\n");
        return 1;
    }
    // The same statement the report page runs for the URL report, sorted as the tool sorts it.
    const std::string query =
        "SELECT URL,DOMAIN_NAME,EXE_NAME,SEND_BITS,RECEIVED_BITS,START_TIME,STOP_TIME FROM URL_RPT_TBL WHERE "
        "USER_ID=1 AND START_TIME >= '2026-01-01 00:00:00' AND START_TIME < '2026-02-01 00:00:00' ORDER BY "
        "URL ASC";
    const std::string path = QFile::encodeName(store).toStdString();
    const QString refOut = dir.filePath(QStringLiteral("ref.csv"));
    const QString ourOut = dir.filePath(QStringLiteral("ours.csv"));
    const Run ref = Measure("sqlite3", {"-csv", path, query}, refOut);
    const Run ours = Measure(HV_ADMIN_TOOL,
                             {"--store", path, "reports", "export", "--type", "url", "--user", "jsmith",
                              "--from", "2026-01-01", "--to", "2026-01-31", "--format", "csv",
                              QFile::encodeName(ourOut).toStdString()},
                             QString());
    if (ref.exit != 0 || ours.exit != 0) {
        std::fprintf(stderr, "a run failed: sqlite3 %d, halvenorts-admin %d\n", ref.exit, ours.exit);
        return 1;
    }
    const double ratio = ours.cpu / ref.cpu;
    std::printf("%ld rows\n", rows);
    std::printf("sqlite3 -csv:              %7.2f s (wall %7.2f s), peak %6ld KB, %lld bytes\n", ref.cpu,
                ref.wall, ref.peakKb, QFileInfo(refOut).size());
    std::printf("halvenorts-admin export:   %7.2f s (wall %7.2f s), peak %6ld KB, %lld bytes\n", ours.cpu,
                ours.wall, ours.peakKb, QFileInfo(ourOut).size());
    std::printf("time %.2f x (limit %.1f), peak memory %ld KB (limit %ld KB)\n", ratio, kTimeLimit,
                ours.peakKb, kMemoryLimitKb);
    const bool ok = ratio <= kTimeLimit && ours.peakKb <= kMemoryLimitKb;
    std::printf("%s\n", ok ? "ok" : "MISSED");
    return ok ? 0 : 1;
}
