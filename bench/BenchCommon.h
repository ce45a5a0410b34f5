// What the benchmarks share: the numbered texts they insert or show, and the reference insert that
// the store's own paths are measured against (one statement prepared once, bound per row, one
// transaction).
#pragma once

#include "console/FormCatalog.h"
#include "testing/ScriptedPlatform.h"
#include "ui/Form.h"
#include "ui/Forms.h"

#include <QCoreApplication>
#include <QFile>

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <sqlite3.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <sys/wait.h>
#include <type_traits>
#include <unistd.h>

namespace hv::bench {

// A measurement: the thread's processor time (what the work costs, without the waits for a processor that
// other programs cause) and the wall time beside it. Negative while nothing was measured.
struct Timing {
    double cpu = -1;
    double wall = -1;
    bool Valid() const { return cpu > 0; }
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

// The better of two rounds, each side on its own; a round not measured yet gives way.
inline Timing Best(const Timing& a, const Timing& b) {
    if (!a.Valid())
        return b;
    return {std::min(a.cpu, b.cpu), std::min(a.wall, b.wall)};
}

// The two stores a comparison runs on: the console's own, in the scripted Windows directory, and the
// reference's, in a folder of its own, so that both files grow alike and neither warms the other's cache.
struct Stores {
    QTemporaryDir oursDir{QDir::tempPath() + QStringLiteral("/hv-bench-XXXXXX")};
    QTemporaryDir refDir{QDir::tempPath() + QStringLiteral("/hv-bench-ref-XXXXXX")};
    ScriptedPlatform platform{oursDir.path()};
    PlatformScope scope{platform};
    QString refPath = refDir.path() + QStringLiteral("/hvpolicy.iil");
};

// A page benchmark's ground: a headless application, the two stores, and every page registered as the
// console registers them, so that a page reaches the console through its session.
struct PageBench {
    PageBench(int& argc, char** argv) : app(argc, argv) { Register_All_Forms(); }
    struct Offscreen {
        Offscreen() { qputenv("QT_QPA_PLATFORM", "offscreen"); }
    } offscreen;
    QApplication app;
    Stores stores;
};

// How many rounds each side runs: the first argument, at least one, or `fallback` without one.
inline int Rounds(int argc, char** argv, int fallback) {
    return argc > 1 ? std::max(1, std::atoi(argv[1])) : fallback;
}

// A store opened for reading and writing, as the reference side works on it; nullptr when it cannot be.
inline sqlite3* Open_Store(const QString& path) {
    sqlite3* db = nullptr;
    if (sqlite3_open_v2(path.toUtf8().constData(), &db, SQLITE_OPEN_READWRITE, nullptr) != SQLITE_OK) {
        sqlite3_close(db);
        return nullptr;
    }
    return db;
}

// What a failed round tells after its own words: the first message box the page showed, if any.
inline QString First_Box(const ScriptedPlatform& platform) {
    return platform.boxes.empty() ? QString() : QStringLiteral(": ") + platform.boxes.front().text;
}

// count texts made from pattern, whose %1 is the row number.
inline QStringList Numbered_Texts(int count, const QString& pattern) {
    QStringList texts;
    texts.reserve(count);
    for (int i = 0; i < count; ++i)
        texts.push_back(pattern.arg(i));
    return texts;
}

// A list file of these lines, each ended by CR LF.
inline bool Write_Lines(const QString& path, const QStringList& lines) {
    QFile f(path);
    if (!f.open(QIODevice::WriteOnly))
        return false;
    for (const QString& line : lines)
        f.write(line.toUtf8() + "\r\n");
    return true;
}

// The scripted desktop's answer to the next file dialog: this one file.
inline void Answer_Dialog(ScriptedPlatform& platform, const QString& file) {
    FileDialogAnswer answer;
    answer.cancelled = false;
    answer.files = QStringList{file};
    platform.dialogAnswers.push_back(answer);
}

// Unloads a page and lets Qt delete it, so that the next round makes a fresh one.
inline void Drop_Page(const QString& formName) {
    if (ui::Form* page = ui::Forms::Find(formName))
        page->Unload();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

// Inserts every value into BL_TBL for the user; returns how many rows failed.
inline int Insert_Prepared(sqlite3* db, const QStringList& values, long long user) {
    sqlite3_exec(db, "BEGIN DEFERRED TRANSACTION MY_TRANS", nullptr, nullptr, nullptr);
    sqlite3_stmt* st = nullptr;
    sqlite3_prepare_v2(db, "INSERT OR IGNORE INTO BL_TBL(BL_URL ,COMPUTER_ID,USER_ID) VALUES(?,?,?)", -1, &st,
                       nullptr);
    int failed = 0;
    for (const QString& v : values) {
        const QByteArray utf8 = v.toUtf8();
        sqlite3_bind_text(st, 1, utf8.constData(), int(utf8.size()), SQLITE_TRANSIENT);
        sqlite3_bind_int64(st, 2, 0);
        sqlite3_bind_int64(st, 3, user);
        failed += sqlite3_step(st) == SQLITE_DONE ? 0 : 1;
        sqlite3_reset(st);
    }
    sqlite3_finalize(st);
    sqlite3_exec(db, "COMMIT TRANSACTION MY_TRANS", nullptr, nullptr, nullptr);
    return failed;
}

// Times a reference insert on the store at `path`: `insert(db)` answers how many rows failed. Not valid
// when the store does not open or a row failed.
template <class Insert> Timing Timed_Insert(const QString& path, Insert insert) {
    sqlite3* db = Open_Store(path);
    if (!db)
        return {};
    const Stopwatch watch;
    const int failed = insert(db);
    const Timing took = watch.Read();
    sqlite3_close(db);
    return failed == 0 ? took : Timing{};
}

// The peak resident memory of this process so far (VmHWM), in KiB; -1 when it cannot be read.
inline long Peak_Kb() {
    QFile f(QStringLiteral("/proc/self/status"));
    if (!f.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray& line : f.readAll().split('\n'))
        if (line.startsWith("VmHWM:"))
            return line.mid(6).trimmed().split(' ').value(0).toLong();
    return -1;
}

// Runs `work` in a child process with an application of its own, so that its peak memory is its own, and
// hands back what it gives. A child that fails ends the benchmark with status 2.
template <class F> auto In_Child_Process(int argc, char** argv, F work) {
    using Result = decltype(work());
    static_assert(std::is_trivially_copyable_v<Result>);
    int fds[2];
    if (pipe(fds) != 0)
        std::exit(2);
    const pid_t pid = fork();
    if (pid == 0) {
        close(fds[0]);
        QApplication app(argc, argv);
        const Result r = work();
        if (write(fds[1], &r, sizeof r) != ssize_t(sizeof r))
            _exit(2);
        _exit(0);
    }
    close(fds[1]);
    Result r{};
    const bool ok = read(fds[0], &r, sizeof r) == ssize_t(sizeof r);
    close(fds[0]);
    int status = 0;
    waitpid(pid, &status, 0);
    if (!ok || !WIFEXITED(status) || WEXITSTATUS(status) != 0) {
        std::fprintf(stderr, "a variant failed in its own process\n");
        std::exit(2);
    }
    return r;
}

} // namespace hv::bench
