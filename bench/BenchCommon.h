// What the benchmarks share: the numbered texts they insert or show, and the reference insert that
// the store's own paths are measured against (one statement prepared once, bound per row, one
// transaction).
#pragma once

#include "testing/ScriptedPlatform.h"

#include <QDir>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <sqlite3.h>

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

} // namespace hv::bench
