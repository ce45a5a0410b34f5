#pragma once
// The one place where the console touches SQLite: finding the store, short connections, one statement at
// a time with the whole result as a table of texts, and the failure path (report through Show_Error).
#include "store/Sql.h"

#include <QString>
#include <optional>
#include <vector>

namespace hv {

// Row 0 holds the column names; data rows run from 1 to the row count. Reading a cell that is not there
// raises "Subscript out of range" (9); NULL reads as an empty text; reading a text that is not a number
// (an empty one included) as a number raises "Type mismatch" (13).
class ResultTable final {
public:
    ResultTable() = default;
    int Rows() const { return m_rows.empty() ? 0 : int(m_rows.size()) - 1; }
    int Columns() const { return m_columns; }
    bool Empty() const { return m_rows.empty(); }
    QString Text(int row, int col) const;
    qint64 Long(int row, int col) const;
    bool Is_Null(int row, int col) const;
    void Clear() {
        m_rows.clear();
        m_columns = 0;
    }

    // Filled by Db_Exec.
    void Set_Columns(const std::vector<QString>& names);
    void Append_Row(std::vector<std::optional<QString>> cells);

private:
    const std::optional<QString>& Cell(int row, int col) const;
    std::vector<std::vector<std::optional<QString>>> m_rows;
    int m_columns = 0;
};

QString Get_Windows_Directory();
QString Get_Db_Path(); // Windows directory + "/hvpolicy.iil"
// A tool that is told which store file to use (halvenorts-admin --store) names it here; empty: the default.
void Set_Db_Path(const QString& path);

// Opens a connection; 0 on any failure, after reporting it (missing file: "File not found"; a directory
// or unreadable file: "Path/File access error"; a file of length 0: an empty report).
int Db_Open(const QString& path);
void Db_Close(int handle); // 0 is ignored
// Runs one statement. Handle 0: false, no report. An SQL error: SQLite's text reported, false.
bool Db_Exec(int handle, const Sql& sql, ResultTable& table, long& rows);

bool Run_Query(const Sql& sql, long& rows, ResultTable& table);
bool Run_In_Transaction(const Sql& sql);

// A run of statements on one connection in one transaction. Open() opens the store and begins the
// transaction; Close(), or the batch going, commits whatever became of the statements and closes the
// connection: nothing in the program rolls back. A store that failed to open leaves a handle of 0,
// on which every statement and the commit do nothing.
// Close() answers false when the commit failed, so that a page can show again what the store holds.
class StoreBatch final {
public:
    StoreBatch() = default;
    ~StoreBatch() { Close(); }
    StoreBatch(const StoreBatch&) = delete;
    StoreBatch& operator=(const StoreBatch&) = delete;

    int Open();
    bool Close();
    int Handle() const { return m_handle; }
    ResultTable result;

private:
    int m_handle = 0;
};
bool Compact_Database();
bool Get_Remote_Settings(long& mode, QString& server, long& port);

inline const char* const kBeginTrans = "BEGIN DEFERRED TRANSACTION MY_TRANS";
inline const char* const kCommitTrans = "COMMIT TRANSACTION MY_TRANS";

} // namespace hv
