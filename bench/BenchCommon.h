// What the benchmarks share: the numbered texts they insert or show, and the reference insert that
// the store's own paths are measured against (one statement prepared once, bound per row, one
// transaction).
#pragma once

#include "testing/ScriptedPlatform.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <sqlite3.h>

#include <cstdio>
#include <cstdlib>
#include <sys/wait.h>
#include <type_traits>
#include <unistd.h>

namespace hv::bench {

// The two stores a comparison runs on: the console's own, in the scripted Windows directory, and the
// reference's, in a folder of its own, so that both files grow alike and neither warms the other's cache.
struct Stores {
    QTemporaryDir oursDir{QDir::tempPath() + QStringLiteral("/hv-bench-XXXXXX")};
    QTemporaryDir refDir{QDir::tempPath() + QStringLiteral("/hv-bench-ref-XXXXXX")};
    ScriptedPlatform platform{oursDir.path()};
    PlatformScope scope{platform};
    QString refPath = refDir.path() + QStringLiteral("/hvpolicy.iil");
};

// count texts made from pattern, whose %1 is the row number.
inline QStringList Numbered_Texts(int count, const QString& pattern) {
    QStringList texts;
    texts.reserve(count);
    for (int i = 0; i < count; ++i)
        texts.push_back(pattern.arg(i));
    return texts;
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
