#pragma once
// The one place where the console touches SQLite: finding the store, short connections, one statement at
// a time with the whole result as a table of texts, and the failure path (report through Show_Error).
#include "store/Sql.h"

#include <QString>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

namespace hv {

// Row 0 holds the column names; data rows run from 1 to the row count. Reading a cell that is not there
// raises "Subscript out of range" (9); NULL reads as an empty text; reading a text that is not a number
// (an empty one included) as a number raises "Type mismatch" (13).
class ResultTable final {
public:
    ResultTable() = default;
    int Rows() const { return m_starts.empty() ? 0 : int(m_starts.size()) - 1; }
    int Columns() const { return m_columns; }
    bool Empty() const { return m_starts.empty(); }
    QString Text(int row, int col) const;
    qint64 Long(int row, int col) const;
    bool Is_Null(int row, int col) const;
    void Clear() {
        m_cells.clear();
        m_starts.clear();
        m_columns = 0;
    }

    // Filled by Db_Exec: the names, then each row as a whole or cell by cell after Begin_Row.
    void Set_Columns(const std::vector<QString>& names);
    void Append_Row(std::vector<std::optional<QString>> cells);
    void Begin_Row();
    void Append_Cell(std::optional<QString> cell) { m_cells.push_back(std::move(cell)); }

private:
    const std::optional<QString>& Cell(int row, int col) const;
    // All cells, row after row, in one store (a read of thousands of rows makes no row of its own); row r
    // starts at m_starts[r] and ends where the next one starts.
    std::vector<std::optional<QString>> m_cells;
    std::vector<size_t> m_starts;
    int m_columns = 0;
};

QString Get_Windows_Directory();
QString Get_Db_Path(); // Windows directory + "/hvpolicy.iil"
// A tool that is told which store file to use (halvenorts-admin --store) names it here; empty: the default.
void Set_Db_Path(const QString& path);
// How far each connection's page cache may grow, in KiB. The console keeps large deletes in memory; a tool
// that streams millions of rows keeps its memory small.
void Set_Store_Cache_Kib(long kib);

// Opens a connection; 0 on any failure, after reporting it (missing file: "File not found"; a directory
// or unreadable file: "Path/File access error"; a file of length 0: an empty report).
int Db_Open(const QString& path);
void Db_Close(int handle); // 0 is ignored
// Runs one statement. Handle 0: false, no report. An SQL error: SQLite's text reported, false.
bool Db_Exec(int handle, const Sql& sql, ResultTable& table, long& rows);

bool Run_Query(const Sql& sql, long& rows, ResultTable& table);

// While one of these exists, a statement that runs long (a delete of a million rows) lets the platform
// process pending events now and then, so the window stays painted. The caller keeps its own controls
// from starting other work meanwhile.
class StorePaintsWhileBusy final {
public:
    StorePaintsWhileBusy();
    ~StorePaintsWhileBusy();
    StorePaintsWhileBusy(const StorePaintsWhileBusy&) = delete;
    StorePaintsWhileBusy& operator=(const StorePaintsWhileBusy&) = delete;
};
// Runs a query as Run_Query does, but hands each result row to `row` as it is stepped (the cells as texts,
// NULL as an empty text) instead of keeping a table: for results that run to millions of rows. The cells
// are valid for the call only. `rows` counts the rows handed over.
using RowSink = std::function<void(const QString* cells, int count)>;
bool Run_Query_Rows(const Sql& sql, const RowSink& row, long& rows);
bool Run_In_Transaction(const Sql& sql);

// A run of statements on one connection in one transaction. Open() opens the store and begins the
// transaction; Close(), or the batch going, commits whatever became of the statements and closes the
// connection: nothing in the program rolls back. A store that failed to open leaves a handle of 0,
// on which every statement and the commit do nothing.
//
// A commit can still fail (another process holds the store) and closing the connection then rolls the
// whole batch back, rows that succeeded included. The failure is reported like any statement's, and the
// batch then runs its page's reload, once the connection is gone, so what a list shows is what is stored.
class StoreBatch final {
public:
    StoreBatch() = default;
    explicit StoreBatch(std::function<void()> reload) : m_reload(std::move(reload)) {}
    ~StoreBatch();
    StoreBatch(const StoreBatch&) = delete;
    StoreBatch& operator=(const StoreBatch&) = delete;

    int Open();
    // False when the batch's work did not reach the store (the reload has run by then). Without a
    // connection there is nothing to commit: the open has reported its failure already.
    bool Close();
    int Handle() const { return m_handle; }
    ResultTable result;

private:
    int m_handle = 0;
    std::function<void()> m_reload;
};
bool Compact_Database();
bool Get_Remote_Settings(long& mode, QString& server, long& port);

inline const char* const kBeginTrans = "BEGIN DEFERRED TRANSACTION MY_TRANS";
inline const char* const kCommitTrans = "COMMIT TRANSACTION MY_TRANS";

} // namespace hv
