#include "store/modDB.h"

#include "core/clsLog.h"
#include "platform/Err.h"
#include "platform/Platform.h"
#include "store/Statements.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStringEncoder>
#include <sqlite3.h>

#include <cmath>
#include <functional>
#include <limits>
#include <map>
#include <memory>
#include <unordered_map>
#include <utility>

namespace hv {

// ---------------------------------------------------------------------------------------------------
// Result table

const std::optional<QString>& ResultTable::Cell(int row, int col) const {
    if (row < 0 || col < 0 || row >= Rows() + 1)
        Err().Raise(errnum::SubscriptOutOfRange);
    const size_t start = m_starts[size_t(row)];
    const size_t end = size_t(row) + 1 < m_starts.size() ? m_starts[size_t(row) + 1] : m_cells.size();
    if (size_t(col) >= end - start)
        Err().Raise(errnum::SubscriptOutOfRange);
    return m_cells[start + size_t(col)];
}

QString ResultTable::Text(int row, int col) const {
    // A NULL cell reads as an empty text, as the table query hands it over; read as a number it is then
    // a type mismatch.
    const auto& cell = Cell(row, col);
    return cell ? *cell : QString();
}

bool ResultTable::Is_Null(int row, int col) const {
    return !Cell(row, col).has_value();
}

qint64 ResultTable::Long(int row, int col) const {
    const QString text = Text(row, col);
    // What an implicit conversion of a text to a whole number accepts: blanks around a decimal number,
    // which may carry a sign, a fraction and an exponent; a fraction rounds half to even.
    static const QRegularExpression number(
        QStringLiteral("^\\s*([+-]?)(?:(\\d+)|(\\d+\\.\\d*|\\.\\d+|\\d+(?:\\.\\d*)?[eE][+-]?\\d+))\\s*$"));
    const auto m = number.match(text);
    if (!m.hasMatch())
        Err().Raise(errnum::TypeMismatch);
    if (m.capturedLength(2) > 0) {
        bool ok = false;
        const qint64 whole = (m.captured(1) + m.captured(2)).toLongLong(&ok);
        if (!ok)
            Err().Raise(errnum::Overflow);
        return whole;
    }
    const double value = (m.captured(1) + m.captured(3)).toDouble();
    const double rounded = std::nearbyint(value); // the default rounding mode is to nearest, ties to even
    if (!(rounded >= -9.2233720368547758e18 && rounded < 9.2233720368547758e18))
        Err().Raise(errnum::Overflow);
    return qint64(rounded);
}

void ResultTable::Set_Columns(const std::vector<QString>& names) {
    Clear();
    m_starts.push_back(0);
    m_cells.assign(names.begin(), names.end());
    m_columns = int(names.size());
}

void ResultTable::Begin_Row() {
    if (m_starts.empty())
        m_starts.push_back(0); // a name row is always row 0
    m_starts.push_back(m_cells.size());
}

void ResultTable::Append_Row(std::vector<std::optional<QString>> cells) {
    Begin_Row();
    for (std::optional<QString>& cell : cells)
        m_cells.push_back(std::move(cell));
}

// ---------------------------------------------------------------------------------------------------
// Connections

namespace {

struct StmtDeleter {
    void operator()(sqlite3_stmt* s) const { sqlite3_finalize(s); }
};
using StmtPtr = std::unique_ptr<sqlite3_stmt, StmtDeleter>;

// One open store connection and the statements prepared on it. Batches run the same statement text
// thousands of times with new values, so each text is prepared once per connection.
class Connection final {
public:
    explicit Connection(sqlite3* db) : m_db(db) {}
    ~Connection() {
        m_statements.clear(); // every statement is finalized before the connection goes
        sqlite3_close_v2(m_db);
    }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    sqlite3* Db() const { return m_db; }

    // The prepared statement for this text, ready for new values; null with the error left on the
    // connection when it does not prepare, and null without error for a text with no statement in it.
    sqlite3_stmt* Prepare(const QString& text, int& rc) {
        rc = SQLITE_OK;
        if (auto it = m_statements.find(text); it != m_statements.end()) {
            sqlite3_reset(it->second.get());
            sqlite3_clear_bindings(it->second.get());
            return it->second.get();
        }
        if (m_statements.size() >= kCacheLimit)
            m_statements.clear();
        const QByteArray utf8 = text.toUtf8();
        sqlite3_stmt* raw = nullptr;
        rc = sqlite3_prepare_v3(m_db, utf8.constData(), int(utf8.size()), SQLITE_PREPARE_PERSISTENT, &raw,
                                nullptr);
        if (rc != SQLITE_OK || !raw) {
            sqlite3_finalize(raw);
            return nullptr;
        }
        return m_statements.emplace(text, StmtPtr(raw)).first->second.get();
    }

    // Room for the bound texts of one statement; valid until the next call.
    char* Text_Buffer(qsizetype size) {
        if (m_texts.size() < size_t(size) + 1)
            m_texts.resize(size_t(size) + 1);
        return m_texts.data();
    }
    QStringEncoder& Encoder() { return m_encoder; }

private:
    static constexpr size_t kCacheLimit = 64;
    sqlite3* m_db;
    std::vector<char> m_texts;
    QStringEncoder m_encoder{QStringEncoder::Utf8, QStringConverter::Flag::Stateless};
    std::unordered_map<QString, StmtPtr> m_statements;
};

std::map<int, std::unique_ptr<Connection>>& Connections() {
    static std::map<int, std::unique_ptr<Connection>> registry;
    return registry;
}

int Register(std::unique_ptr<Connection> c) {
    auto& reg = Connections();
    int handle = 1;
    for (const auto& [h, _] : reg) {
        if (h != handle)
            break;
        ++handle;
    }
    reg.emplace(handle, std::move(c));
    return handle;
}

Connection* Find(int handle) {
    auto& reg = Connections();
    const auto it = reg.find(handle);
    return it == reg.end() ? nullptr : it->second.get();
}

int g_paintHolders = 0;

// Called by SQLite every so many steps of its machine.
int Let_Paint(void*) {
    static QElapsedTimer sincePaint;
    if (g_paintHolders > 0 && (!sincePaint.isValid() || sincePaint.elapsed() >= 100)) {
        platform().Do_Events();
        sincePaint.start();
    }
    return 0; // never interrupts the statement
}

// Reports what Db_Open found and gives no connection.
int Open_Failed() {
    Show_Error(Err().Description, true);
    Err().Clear();
    return 0;
}

// An SQL failure: SQLite's own words in the report.
bool Sql_Failed(const QString& message) {
    Show_Error(message, true);
    return false;
}

// What SQLite says of the statement as it reads with its values written in, when an apostrophe in a value
// has ended a quoted literal early. The text is only compiled, never run. Where the broken text still
// compiles (the rest of the value happens to read as SQL), it is refused all the same, as a syntax error.
QString Broken_Literal_Message(sqlite3* db, const Sql& sql) {
    const QByteArray utf8 = sql.Literal_Text().toUtf8();
    sqlite3_stmt* probe = nullptr;
    const int rc = sqlite3_prepare_v2(db, utf8.constData(), int(utf8.size()), &probe, nullptr);
    sqlite3_finalize(probe);
    if (rc != SQLITE_OK)
        return QString::fromUtf8(sqlite3_errmsg(db));
    return QStringLiteral("near \"'\": syntax error");
}

} // namespace

QString Get_Windows_Directory() {
    QString dir = platform().Windows_Directory();
    while (dir.size() > 1 && (dir.endsWith(u'/') || dir.endsWith(u'\\')))
        dir.chop(1);
    return dir;
}

namespace {
QString& Named_Store() {
    static QString path;
    return path;
}
long& Cache_Kib() {
    static long kib = 65536;
    return kib;
}
} // namespace

void Set_Store_Cache_Kib(long kib) {
    Cache_Kib() = kib;
}

void Set_Db_Path(const QString& path) {
    Named_Store() = path;
}

QString Get_Db_Path() {
    if (!Named_Store().isEmpty())
        return Named_Store();
    return Get_Windows_Directory() + QStringLiteral("/hvpolicy.iil");
}

int Db_Open(const QString& path) {
    const QFileInfo info(path);
    if (!info.exists()) {
        Err().Set(errnum::FileNotFound);
        return Open_Failed();
    }
    if (info.isDir() || !info.isReadable()) {
        Err().Set(errnum::PathFileAccessError);
        return Open_Failed();
    }
    if (info.size() == 0)
        return Open_Failed(); // nothing to open: the report carries whatever error is pending, usually none

    sqlite3* db = nullptr;
    // The console never creates the store, so a file that vanished in between stays a failure.
    const int rc =
        sqlite3_open_v2(path.toUtf8().constData(), &db, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
    if (rc != SQLITE_OK) {
        sqlite3_close_v2(db);
        Err().Set(errnum::PathFileAccessError);
        return Open_Failed();
    }
    // Deleted usage rows need not be overwritten on disk, and a delete of a million report rows keeps its
    // pages in memory until the commit instead of spilling them to the file on the way.
    sqlite3_exec(db, "PRAGMA secure_delete=OFF", nullptr, nullptr, nullptr);
    sqlite3_exec(db, ("PRAGMA cache_size=-" + QByteArray::number(Cache_Kib())).constData(), nullptr, nullptr,
                 nullptr);
    sqlite3_progress_handler(db, 100000, &Let_Paint, nullptr);
    return Register(std::make_unique<Connection>(db));
}

void Db_Close(int handle) {
    if (handle != 0)
        Connections().erase(handle);
}

namespace {

// Prepares the statement on the connection and binds its values; null after reporting a failure, or null
// with `empty` set for a text that holds no statement.
sqlite3_stmt* Prepare_Bound(Connection* conn, const Sql& sql, bool& empty) {
    empty = false;
    // A value with an apostrophe would have ended its literal early and broken the statement; it is
    // refused with SQLite's words for the broken text, and nothing of it runs.
    if (sql.Has_Quote_In_Text()) {
        Sql_Failed(Broken_Literal_Message(conn->Db(), sql));
        return nullptr;
    }
    int rc = SQLITE_OK;
    sqlite3_stmt* stmt = conn->Prepare(sql.Bound_Text(), rc);
    if (rc != SQLITE_OK) {
        Sql_Failed(QString::fromUtf8(sqlite3_errmsg(conn->Db())));
        return nullptr;
    }
    if (!stmt) {
        empty = true;
        return nullptr;
    }

    // The texts are written as UTF-8, the store's encoding, into the connection's buffer, which outlives the
    // step: SQLite neither copies nor converts them, and a batch of thousands of rows allocates nothing.
    qsizetype room = 0;
    for (const Sql::Piece& p : sql.Pieces())
        room += p.kind == Sql::Piece::Text ? p.text.size() * 3 : 0;
    char* out = conn->Text_Buffer(room);
    int index = 0;
    for (const Sql::Piece& p : sql.Pieces()) {
        if (p.kind == Sql::Piece::Literal)
            continue;
        ++index;
        if (p.kind == Sql::Piece::Text) {
            char* const start = out;
            out = conn->Encoder().appendToBuffer(out, p.text);
            rc = sqlite3_bind_text(stmt, index, start, int(out - start), SQLITE_STATIC);
        } else {
            rc = sqlite3_bind_int64(stmt, index, p.number);
        }
        if (rc != SQLITE_OK) {
            Sql_Failed(QString::fromUtf8(sqlite3_errmsg(conn->Db())));
            return nullptr;
        }
    }
    return stmt;
}

// Steps the statement to its end, handing over each row; reports a failure of the step.
bool Step_All(Connection* conn, sqlite3_stmt* stmt, const std::function<void()>& row) {
    int rc;
    while ((rc = sqlite3_step(stmt)) == SQLITE_ROW)
        row();
    const bool ok = rc == SQLITE_DONE;
    const QString message = ok ? QString() : QString::fromUtf8(sqlite3_errmsg(conn->Db()));
    sqlite3_reset(stmt);
    sqlite3_clear_bindings(stmt);
    return ok || Sql_Failed(message);
}

QString Cell_Text(sqlite3_stmt* stmt, int c) {
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(stmt, c));
    return QString::fromUtf8(text, sqlite3_column_bytes(stmt, c));
}

} // namespace

bool Db_Exec(int handle, const Sql& sql, ResultTable& table, long& rows) {
    if (handle == 0)
        return false;
    table.Clear();
    Connection* conn = Find(handle);
    if (!conn)
        return Sql_Failed(QString::fromUtf8(sqlite3_errstr(SQLITE_MISUSE)));
    bool empty = false;
    sqlite3_stmt* stmt = Prepare_Bound(conn, sql, empty);
    if (!stmt) {
        if (!empty)
            return false;
        table.Set_Columns({});
        rows = 0;
        return true;
    }

    const int columns = sqlite3_column_count(stmt);
    std::vector<QString> names;
    names.reserve(size_t(columns));
    for (int c = 0; c < columns; ++c)
        names.push_back(QString::fromUtf8(sqlite3_column_name(stmt, c)));
    table.Set_Columns(names);

    const bool ok = Step_All(conn, stmt, [&] {
        table.Begin_Row();
        for (int c = 0; c < columns; ++c) {
            const int type = sqlite3_column_type(stmt, c);
            if (type == SQLITE_NULL)
                table.Append_Cell(std::nullopt);
            // A whole number is written out here, as SQLite would write it, without SQLite making a text
            // of its own first: key columns are read by the thousand.
            else if (type == SQLITE_INTEGER)
                table.Append_Cell(QString::number(sqlite3_column_int64(stmt, c)));
            else
                table.Append_Cell(Cell_Text(stmt, c));
        }
    });
    if (ok)
        rows = table.Rows();
    return ok;
}

bool Run_Query_Rows(const Sql& sql, const RowSink& row, long& rows) {
    rows = 0;
    const int handle = Db_Open(Get_Db_Path());
    if (handle == 0)
        return false;
    // The sink may raise a run-time failure of its own; the connection is closed on that path too.
    struct Closer {
        int handle;
        ~Closer() { Db_Close(handle); }
    } closer{handle};
    bool ok = true;
    bool empty = false;
    Connection* conn = Find(handle);
    if (sqlite3_stmt* stmt = Prepare_Bound(conn, sql, empty)) {
        const int columns = sqlite3_column_count(stmt);
        std::vector<QString> cells(static_cast<size_t>(columns));
        ok = Step_All(conn, stmt, [&] {
            for (int c = 0; c < columns; ++c)
                cells[size_t(c)] = Cell_Text(stmt, c);
            ++rows;
            row(cells.data(), columns);
        });
    } else {
        ok = empty;
    }
    if (!ok)
        Report_Error();
    return ok;
}

StorePaintsWhileBusy::StorePaintsWhileBusy() {
    ++g_paintHolders;
}

StorePaintsWhileBusy::~StorePaintsWhileBusy() {
    --g_paintHolders;
}

bool Run_Query(const Sql& sql, long& rows, ResultTable& table) {
    bool ok = false;
    const int handle = Db_Open(Get_Db_Path());
    if (handle != 0) {
        if (Db_Exec(handle, sql, table, rows))
            ok = true;
        else
            Report_Error();
    }
    Db_Close(handle);
    return ok;
}

bool Run_In_Transaction(const Sql& sql) {
    StoreBatch batch;
    if (batch.Open() == 0)
        return false;
    long rows = 0;
    if (Db_Exec(batch.Handle(), sql, batch.result, rows))
        return true;
    Report_Error();
    return false;
}

int StoreBatch::Open() {
    Close();
    long rows = 0;
    m_handle = Db_Open(Get_Db_Path());
    Db_Exec(m_handle, Sql(kBeginTrans), result, rows);
    return m_handle;
}

bool StoreBatch::Close() {
    if (m_handle == 0)
        return true;
    long rows = 0;
    const bool committed = Db_Exec(m_handle, Sql(kCommitTrans), result, rows);
    Db_Close(std::exchange(m_handle, 0));
    if (!committed && m_reload)
        m_reload();
    return committed;
}

StoreBatch::~StoreBatch() {
    // No exception may leave a destructor: a reload that fails as the batch goes out of scope is reported
    // here.
    try {
        Close();
    } catch (const RunTimeFailure&) {
        Report_Error();
    }
}

bool Compact_Database() {
    bool ok = false;
    ResultTable table;
    long rows = 0;
    const int handle = Db_Open(Get_Db_Path());
    if (handle != 0 && Db_Exec(handle, Sql("VACUUM"), table, rows)) {
        Log_Event(QStringLiteral("Database compressed successfully!"), 1, true);
        ok = true;
    }
    Db_Close(handle);
    return ok;
}

bool Get_Remote_Settings(long& mode, QString& server, long& port) {
    ResultTable table;
    long rows = 0;
    if (!Run_Query(stmt::Get_Remote_Settings(), rows, table))
        return false;
    try {
        mode = long(table.Long(1, 0));
        server = table.Text(1, 1);
        port = long(table.Long(1, 2));
        return true;
    } catch (const RunTimeFailure&) {
        Report_Error();
        return false;
    }
}

} // namespace hv
