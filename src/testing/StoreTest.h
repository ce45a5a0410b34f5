#pragma once
// For the unit tests of the store: a store laid down as the installer lays it down in the scripted
// platform's scratch Windows directory, and reads of a store file that go around the program's engine.
// Only test programs include this (it needs GoogleTest).
#include "platform/Err.h"
#include "setup/StoreSetup.h"
#include "store/modDBFunctions.h"
#include "testing/ScriptedPlatform.h"

#include <QFile>
#include <gtest/gtest.h>
#include <sqlite3.h>

namespace hv::testing {

// Each row of a statement run on the store file by SQLite itself, its cells joined by '|' (NULL as
// "<null>"). A statement that does not compile is a failure of the test.
inline QStringList Raw_Rows(const QString& path, const QByteArray& sql) {
    sqlite3* db = nullptr;
    sqlite3_open_v2(QFile::encodeName(path).constData(), &db, SQLITE_OPEN_READWRITE, nullptr);
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

inline QByteArray File_Bytes(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

inline void Write_File(const QString& path, const QByteArray& bytes) {
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
    ASSERT_EQ(f.write(bytes), bytes.size());
}

class StoreTest : public ::testing::Test {
protected:
    void SetUp() override {
        Err().Clear();
        QString error;
        ASSERT_TRUE(Create_Store(Get_Db_Path(), false, &error)) << error.toStdString();
    }
    void TearDown() override { Err().Clear(); }
    // The texts of the boxes shown since the last look, each checked to be critical.
    QStringList Box_Texts() {
        QStringList texts;
        for (const RecordedBox& b : p.boxes) {
            EXPECT_EQ(b.style, MsgStyle::Critical) << b.text.toStdString();
            texts << b.text;
        }
        p.boxes.clear();
        return texts;
    }
    // A statement run through the program's engine, which must go through.
    void Run(const QString& sql) {
        long rows = 0;
        ResultTable t;
        EXPECT_TRUE(Run_Query(Sql().lit(sql), rows, t)) << sql.toStdString();
    }
    // The first cell of each row of a query run through the program's engine; nothing when it fails.
    QStringList Column(const QString& sql) {
        long rows = 0;
        ResultTable t;
        QStringList out;
        if (Run_Query(Sql().lit(sql), rows, t))
            for (long i = 1; i <= rows; ++i)
                out << t.Text(int(i), 0);
        return out;
    }

    ScriptedPlatform p;
    PlatformScope scope{p};
};

} // namespace hv::testing
