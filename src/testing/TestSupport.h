#pragma once
// What several test files need alike.
#include "platform/Err.h"

#include <QString>
#include <QStringList>
#include <functional>
#include <gtest/gtest.h>
#include <sqlite3.h>

namespace hv::testing {

// The run-time error number that f raises, 0 when it raises none.
inline long Raised(const std::function<void()>& f) {
    Err().Clear();
    try {
        f();
    } catch (const RunTimeFailure&) {
        return Err().Number;
    }
    return 0;
}

// Each row of a query on the store at `path`, its cells joined by '|' (NULL as "<null>").
inline QStringList Store_Rows(const QString& path, const QByteArray& sql) {
    sqlite3* db = nullptr;
    sqlite3_open(path.toUtf8().constData(), &db);
    sqlite3_stmt* stmt = nullptr;
    if (sqlite3_prepare_v2(db, sql.constData(), -1, &stmt, nullptr) != SQLITE_OK)
        ADD_FAILURE() << sql.constData() << ": " << sqlite3_errmsg(db);
    QStringList rows;
    while (stmt && sqlite3_step(stmt) == SQLITE_ROW) {
        QStringList cells;
        for (int c = 0; c < sqlite3_column_count(stmt); ++c) {
            const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(stmt, c));
            cells << (text ? QString::fromUtf8(text) : QStringLiteral("<null>"));
        }
        rows << cells.join(u'|');
    }
    sqlite3_finalize(stmt);
    sqlite3_close(db);
    return rows;
}

} // namespace hv::testing
