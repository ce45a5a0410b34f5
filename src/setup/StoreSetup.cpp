#include "setup/StoreSetup.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringList>
#include <sqlite3.h>

#include <unistd.h>

#include <array>
#include <cstdio>
#include <memory>
#include <random>
#include <vector>

namespace hv {

namespace {

// ---------------------------------------------------------------------------------------------------
// The schema. Every column has a default, so a row written with some columns only has no NULL in it; the
// defaults of USER_TBL are what the console reads from a user that Add_User has just created with a name
// only. NULL itself is not refused: the other writers of the file may leave a value out that way, and the
// console reads it as an empty text.

#define HV_SUBJECT_COLUMNS                                                                                   \
    "FEATURE_BITS INTEGER DEFAULT 0,\n"                                                                      \
    "STATUS_BITS INTEGER DEFAULT 0,\n"                                                                       \
    "IA_ON_OFF INTEGER DEFAULT 1,\n"                                                                         \
    "SCH_FOR INTEGER DEFAULT 1,\n"                                                                           \
    "DEVICE_LOCK INTEGER DEFAULT 21,\n"                                                                      \
    "URL_MSG_TYPE INTEGER DEFAULT 0,\n"                                                                      \
    "BLOCKED_URL_MSG TEXT DEFAULT 'This site has been blocked by your administrator.',\n"                    \
    "REDIRECT_URL TEXT DEFAULT '',\n"                                                                        \
    "APP_MSG_TYPE INTEGER DEFAULT 0,\n"                                                                      \
    "APP_BLOCKER_MSG TEXT DEFAULT 'This application has been blocked by your administrator.'"

#define HV_OWNER_COLUMNS "COMPUTER_ID INTEGER DEFAULT 0, USER_ID INTEGER DEFAULT 0"

const char* const kSchema[] = {
    "CREATE TABLE SETTINGS_TBL (SETTINGS_ID INTEGER DEFAULT 1, PROGRAM_MODE INTEGER "
    "DEFAULT 0,"
    " CLIENT_OPTIONS INTEGER DEFAULT 2, PWD TEXT DEFAULT 'Watchman',"
    " REMOTE_MODE INTEGER DEFAULT 0, SERVER_NAME TEXT DEFAULT 'localhost',"
    " CLIENT_PORT TEXT DEFAULT '5150')",
    // A removed user's rows stay in the list, schedule and report tables under the old USER_ID, so an id
    // is never given out twice: a new user must not find a removed one's policy.
    "CREATE TABLE USER_TBL (USER_ID INTEGER PRIMARY KEY AUTOINCREMENT, USER_NAME TEXT DEFAULT '' "
    "UNIQUE,\n" HV_SUBJECT_COLUMNS ")",
    "CREATE TABLE COMPUTER_TBL (COMPUTER_ID INTEGER PRIMARY KEY,\n" HV_SUBJECT_COLUMNS ")",
    "CREATE TABLE USER_EXCPN_TBL (E_ID INTEGER PRIMARY KEY, E_USER_NAME TEXT DEFAULT '')",
    "CREATE TABLE BL_TBL (BL_URL TEXT DEFAULT '', " HV_OWNER_COLUMNS
    ", UNIQUE (BL_URL, COMPUTER_ID, USER_ID))",
    "CREATE TABLE WL_TBL (WL_URL TEXT DEFAULT '', " HV_OWNER_COLUMNS
    ", UNIQUE (WL_URL, COMPUTER_ID, USER_ID))",
    "CREATE TABLE FILE_TBL (FILE_EXTN TEXT DEFAULT '', " HV_OWNER_COLUMNS
    ", UNIQUE (FILE_EXTN, COMPUTER_ID, USER_ID))",
    "CREATE TABLE SMTP_TBL (SMTP_EMAIL TEXT DEFAULT '', " HV_OWNER_COLUMNS
    ", UNIQUE (SMTP_EMAIL, COMPUTER_ID, USER_ID))",
    "CREATE TABLE POP3_TBL (POP3_EMAIL TEXT DEFAULT '', " HV_OWNER_COLUMNS
    ", UNIQUE (POP3_EMAIL, COMPUTER_ID, USER_ID))",
    "CREATE TABLE EXE_TBL (EXE_NAME TEXT DEFAULT '', " HV_OWNER_COLUMNS
    ", UNIQUE (EXE_NAME, COMPUTER_ID, USER_ID))",
    "CREATE TABLE WINDOW_TBL (WINDOW_TITLE TEXT DEFAULT '', " HV_OWNER_COLUMNS
    ", UNIQUE (WINDOW_TITLE, COMPUTER_ID, USER_ID))",
    // Bypassed programs are inserted plainly, so a repeated one is a second row.
    "CREATE TABLE BYPASS_EXE_TBL (BYPASS_EXE TEXT DEFAULT '', " HV_OWNER_COLUMNS ")",
    "CREATE TABLE PORT_TBL (PORT_NO INTEGER DEFAULT 0, FILTER_TYPE INTEGER DEFAULT 0,"
    " PROTOCOL_TYPE TEXT DEFAULT '', " HV_OWNER_COLUMNS ")",
    "CREATE TABLE SCH_TBL (SCH_ID INTEGER PRIMARY KEY, SCH_FOR INTEGER DEFAULT 1,"
    " SCH_SUB_TYPE INTEGER DEFAULT 0, D_W_M INTEGER DEFAULT 1, WEEKDAYS INTEGER "
    "DEFAULT 0,"
    " MONTHS INTEGER DEFAULT 0, FROM_TIME TEXT DEFAULT '00:00',"
    " TO_TIME TEXT DEFAULT '23:59', " HV_OWNER_COLUMNS ")",
    "CREATE TABLE URL_RPT_TBL (URL TEXT DEFAULT '', DOMAIN_NAME TEXT DEFAULT '',"
    " EXE_NAME TEXT DEFAULT '', SEND_BITS INTEGER DEFAULT 0,"
    " RECEIVED_BITS INTEGER DEFAULT 0, START_TIME TEXT DEFAULT '',"
    " STOP_TIME TEXT DEFAULT '', USER_ID INTEGER DEFAULT 0)",
    "CREATE TABLE PROGRAM_RPT_TBL (PROGRAM_NAME TEXT DEFAULT '', PRODUCT_NAME TEXT DEFAULT "
    "'',"
    " PROGRAM_TITLE TEXT DEFAULT '', PROGRAM_PATH TEXT DEFAULT '',"
    " COMPANY_NAME TEXT DEFAULT '', START_TIME TEXT DEFAULT '',"
    " STOP_TIME TEXT DEFAULT '', USER_ID INTEGER DEFAULT 0)",
    "CREATE TABLE DEVICE_RPT_TBL (DEVICE TEXT DEFAULT '', DEVICE_DESCRIPTION TEXT DEFAULT "
    "'',"
    " DEVICE_LABEL TEXT DEFAULT '', MANUFACTURER TEXT DEFAULT '',"
    " START_TIME TEXT DEFAULT '', STOP_TIME TEXT DEFAULT '',"
    " DEVICE_TYPE INTEGER DEFAULT 0, USER_ID INTEGER DEFAULT 0)",
    "CREATE TABLE EMAIL_RPT_TBL (FROM_ADDRESS TEXT DEFAULT '', TO_ADDRESS TEXT DEFAULT '',"
    " CC_ADDRESS TEXT DEFAULT '', BCC_ADDRESS TEXT DEFAULT '', SUBJECT TEXT "
    "DEFAULT '',"
    " START_TIME TEXT DEFAULT '', ATTACHMENT TEXT DEFAULT '',"
    " EMAIL_TYPE INTEGER DEFAULT 0, USER_ID INTEGER DEFAULT 0)",
    // The report pages select by user and time range.
    "CREATE INDEX URL_RPT_USER_TIME_IDX ON URL_RPT_TBL (USER_ID, START_TIME)",
    "CREATE INDEX PROGRAM_RPT_USER_TIME_IDX ON PROGRAM_RPT_TBL (USER_ID, START_TIME)",
    "CREATE INDEX DEVICE_RPT_USER_TIME_IDX ON DEVICE_RPT_TBL (USER_ID, START_TIME)",
    "CREATE INDEX EMAIL_RPT_USER_TIME_IDX ON EMAIL_RPT_TBL (USER_ID, START_TIME)",
    // Key rows: the policy row of All User Mode, with the lowest USER_ID, and the one settings row.
    "INSERT INTO USER_TBL (USER_ID, USER_NAME) VALUES (0, '[All Users...]')",
    "INSERT INTO SETTINGS_TBL (SETTINGS_ID, PROGRAM_MODE, CLIENT_OPTIONS, PWD, REMOTE_MODE, SERVER_NAME,"
    " CLIENT_PORT) VALUES (1, 0, 2, 'Watchman', 0, 'localhost', '5150')",
};

#undef HV_SUBJECT_COLUMNS
#undef HV_OWNER_COLUMNS

// ---------------------------------------------------------------------------------------------------
// Thin owners of an SQLite connection and statement, with the error text kept for the caller.

struct DbCloser {
    void operator()(sqlite3* db) const { sqlite3_close_v2(db); }
};
struct StmtFinalizer {
    void operator()(sqlite3_stmt* s) const { sqlite3_finalize(s); }
};

class Store final {
public:
    bool Open(const QString& path, int flags, QString* error) {
        sqlite3* raw = nullptr;
        const int rc = sqlite3_open_v2(QFile::encodeName(path).constData(), &raw, flags, nullptr);
        m_db.reset(raw);
        if (rc != SQLITE_OK)
            return Fail(error, QStringLiteral("Cannot open %1: %2").arg(path, Message()));
        return true;
    }
    bool Exec(const char* sql, QString* error) {
        if (sqlite3_exec(m_db.get(), sql, nullptr, nullptr, nullptr) != SQLITE_OK)
            return Fail(error, Message());
        return true;
    }
    QString Message() const {
        return m_db ? QString::fromUtf8(sqlite3_errmsg(m_db.get())) : QStringLiteral("out of memory");
    }
    sqlite3* Db() const { return m_db.get(); }
    static bool Fail(QString* error, const QString& text) {
        if (error)
            *error = text;
        return false;
    }

private:
    std::unique_ptr<sqlite3, DbCloser> m_db;
};

// The store's readers (the enforcement components) read it all the time. In write-ahead-log mode they
// never block the console's writes and the console never blocks them; the mode is kept in the file, so
// every later connection has it. It cannot be switched inside a transaction.
bool Use_Wal(Store& store, QString* error) {
    sqlite3_stmt* raw = nullptr;
    if (sqlite3_prepare_v2(store.Db(), "PRAGMA journal_mode=WAL", -1, &raw, nullptr) != SQLITE_OK)
        return Store::Fail(error, store.Message());
    const std::unique_ptr<sqlite3_stmt, StmtFinalizer> statement(raw);
    if (sqlite3_step(raw) != SQLITE_ROW)
        return Store::Fail(error, store.Message());
    const QString mode = QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(raw, 0)));
    if (mode.compare(QLatin1String("wal"), Qt::CaseInsensitive) != 0)
        return Store::Fail(error,
                           QStringLiteral("the store stays in %1 journal mode: it is in use").arg(mode));
    return true;
}

// One prepared statement run many times: Row() binds the values in order, steps and resets.
class Insert final {
public:
    Insert(Store& store, const char* sql) : m_store(store) {
        sqlite3_stmt* raw = nullptr;
        m_ok = sqlite3_prepare_v2(store.Db(), sql, -1, &raw, nullptr) == SQLITE_OK;
        m_stmt.reset(raw);
    }
    Insert& Text(const char* v) {
        m_ok = m_ok && sqlite3_bind_text(m_stmt.get(), ++m_index, v, -1, SQLITE_TRANSIENT) == SQLITE_OK;
        return *this;
    }
    Insert& Text(const QString& v) { return Text(v.toUtf8().constData()); }
    Insert& Num(qint64 v) {
        m_ok = m_ok && sqlite3_bind_int64(m_stmt.get(), ++m_index, v) == SQLITE_OK;
        return *this;
    }
    // Runs the statement with the values bound since the last row.
    bool Row(QString* error) {
        m_index = 0;
        m_ok = m_ok && sqlite3_step(m_stmt.get()) == SQLITE_DONE;
        sqlite3_reset(m_stmt.get());
        return m_ok || Store::Fail(error, m_store.Message());
    }

private:
    Store& m_store;
    std::unique_ptr<sqlite3_stmt, StmtFinalizer> m_stmt;
    int m_index = 0;
    bool m_ok = false;
};

// ---------------------------------------------------------------------------------------------------
// Demo contents

// "yyyy-MM-dd HH:mm:ss" of a count of seconds from the start of Julian day 0, without time zones: the
// store's times are the server's wall clock.
class TimeText final {
public:
    const char* Format(qint64 seconds) {
        const qint64 day = seconds / 86400;
        const int s = int(seconds % 86400);
        if (day != m_day) {
            m_day = day;
            QDate::fromJulianDay(day).getDate(&m_y, &m_m, &m_d);
        }
        std::snprintf(m_buf, sizeof m_buf, "%04d-%02d-%02d %02d:%02d:%02d", m_y, m_m, m_d, s / 3600,
                      s / 60 % 60, s % 60);
        return m_buf;
    }
    static qint64 Seconds(const QDateTime& t) {
        return t.date().toJulianDay() * 86400 + t.time().msecsSinceStartOfDay() / 1000;
    }

private:
    qint64 m_day = -1;
    int m_y = 0, m_m = 0, m_d = 0;
    char m_buf[32] = {};
};

struct ListRule {
    const char* table;
    const char* column;
    const char* value;
    int user; // index into the demo users, 0 being "[All Users...]"
};

const ListRule kRules[] = {
    {"BL_TBL", "BL_URL", "casino.example.com", 0},
    {"BL_TBL", "BL_URL", "games.example.net", 0},
    {"BL_TBL", "BL_URL", "videos.example.org", 2},
    {"BL_TBL", "BL_URL", "chat.example.com", 1},
    {"WL_TBL", "WL_URL", "intranet.example.com", 0},
    {"WL_TBL", "WL_URL", "docs.example.org", 1},
    {"FILE_TBL", "FILE_EXTN", ".mp3", 0},
    {"FILE_TBL", "FILE_EXTN", ".avi", 0},
    {"FILE_TBL", "FILE_EXTN", ".exe", 2},
    {"SMTP_TBL", "SMTP_EMAIL", "jobs@example.com", 0},
    {"POP3_TBL", "POP3_EMAIL", "offers@example.net", 0},
    {"POP3_TBL", "POP3_EMAIL", "lottery@example.org", 3},
    {"EXE_TBL", "EXE_NAME", "solitaire.exe", 0},
    {"EXE_TBL", "EXE_NAME", "torrent.exe", 1},
    {"WINDOW_TBL", "WINDOW_TITLE", "Minesweeper", 0},
    {"WINDOW_TBL", "WINDOW_TITLE", "Free Games", 2},
    {"BYPASS_EXE_TBL", "BYPASS_EXE", "backup.exe", 0},
};

// The USER_ID of a demo user by its place; the list wraps round when a store already held some names.
qint64 Owner(const std::vector<qint64>& users, int index) {
    return users[size_t(index) % users.size()];
}

bool Fill_Policy(Store& store, const std::vector<qint64>& users, QString* error) {
    if (!store.Exec("UPDATE SETTINGS_TBL SET PROGRAM_MODE=1 WHERE SETTINGS_ID=1", error))
        return false;
    for (const ListRule& r : kRules) {
        const QByteArray sql =
            QStringLiteral("INSERT OR IGNORE INTO %1 (%2, COMPUTER_ID, USER_ID) VALUES (?, 0, ?)")
                .arg(QLatin1String(r.table), QLatin1String(r.column))
                .toLatin1();
        if (!Insert(store, sql.constData()).Text(r.value).Num(Owner(users, r.user)).Row(error))
            return false;
    }

    Insert port(store, "INSERT INTO PORT_TBL (PORT_NO, FILTER_TYPE, PROTOCOL_TYPE, COMPUTER_ID, USER_ID)"
                       " VALUES (?, ?, ?, 0, ?)");
    const struct {
        int port, filter;
        const char* protocol;
        int user;
    } ports[] = {
        {80, 1, "HTTP", 0},      {25, 3, "SMTP", 0},
        {110, 4, "POP3", 0},     {5050, 65535, "Yahoo Messenger", 0},
        {119, 65534, "NEWS", 1}, {1863, 65533, "MSN Messenger", 2},
    };
    for (const auto& p : ports) {
        if (!port.Num(p.port).Num(p.filter).Text(p.protocol).Num(Owner(users, p.user)).Row(error))
            return false;
    }

    // Internet scheduler rows on weekdays (Mon..Fri) and at lunch, and an application window in Jan and Feb.
    Insert sch(store,
               "INSERT INTO SCH_TBL (SCH_FOR, SCH_SUB_TYPE, D_W_M, WEEKDAYS, MONTHS, FROM_TIME, TO_TIME,"
               " COMPUTER_ID, USER_ID) VALUES (?, ?, ?, ?, ?, ?, ?, 0, ?)");
    if (!sch.Num(1)
             .Num(0)
             .Num(2)
             .Num(62)
             .Num(0)
             .Text("09:00")
             .Text("12:00")
             .Num(Owner(users, 2))
             .Row(error) ||
        !sch.Num(1).Num(0).Num(1).Num(0).Num(0).Text("13:00").Text("17:30").Num(Owner(users, 2)).Row(error) ||
        !sch.Num(2).Num(1).Num(3).Num(0).Num(3).Text("12:00").Text("13:00").Num(Owner(users, 1)).Row(error))
        return false;

    // Filters switched on for all users, a user on the Internet scheduler, one with the internet off
    // (the status bit tells the enforcement side), one with a message box for blocked sites.
    Insert user(store,
                "UPDATE USER_TBL SET FEATURE_BITS=?, STATUS_BITS=?, IA_ON_OFF=?, SCH_FOR=?, URL_MSG_TYPE=?"
                " WHERE USER_ID=?");
    const struct {
        qint64 features, status, onOff, schFor, urlMsg;
        int user;
    } states[] = {
        {4 | 8 | 2 | 128 | 256 | 2048 | 4096 | 8192 | 16384, 0, 1, 1, 0, 0},
        {4 | 128 | 512 | 2048 | 4096, 0, 1, 1, 2, 1},
        {1 | 4 | 8 | 2048, 0, 1, 2, 1, 2},
        {32 | 64 | 16384, 4, 0, 1, 0, 3},
    };
    for (const auto& s : states) {
        if (!user.Num(s.features)
                 .Num(s.status)
                 .Num(s.onOff)
                 .Num(s.schFor)
                 .Num(s.urlMsg)
                 .Num(Owner(users, s.user))
                 .Row(error))
            return false;
    }
    return store.Exec("INSERT INTO USER_EXCPN_TBL (E_USER_NAME) VALUES ('backupsvc')", error);
}

bool Fill_Reports(Store& store, long count, const std::vector<qint64>& users, const QDateTime& now,
                  QString* error) {
    Insert url(store,
               "INSERT INTO URL_RPT_TBL (URL, DOMAIN_NAME, EXE_NAME, SEND_BITS, RECEIVED_BITS, START_TIME,"
               " STOP_TIME, USER_ID) VALUES (?, ?, ?, ?, ?, ?, ?, ?)");
    Insert program(store,
                   "INSERT INTO PROGRAM_RPT_TBL (PROGRAM_NAME, PRODUCT_NAME, PROGRAM_TITLE, PROGRAM_PATH,"
                   " COMPANY_NAME, START_TIME, STOP_TIME, USER_ID) VALUES (?, ?, ?, ?, ?, ?, ?, ?)");
    Insert device(store, "INSERT INTO DEVICE_RPT_TBL (DEVICE, DEVICE_DESCRIPTION, DEVICE_LABEL, MANUFACTURER,"
                         " START_TIME, STOP_TIME, DEVICE_TYPE, USER_ID) VALUES (?, ?, ?, ?, ?, ?, ?, ?)");
    Insert email(store,
                 "INSERT INTO EMAIL_RPT_TBL (FROM_ADDRESS, TO_ADDRESS, CC_ADDRESS, BCC_ADDRESS, SUBJECT,"
                 " START_TIME, ATTACHMENT, EMAIL_TYPE, USER_ID) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)");

    static const std::array<std::array<const char*, 3>, 4> sites = {{
        {"http://news.example.com/today.html", "news.example.com", "firefox.exe"},
        {"http://www.example.org/index.html", "www.example.org", "iexplore.exe"},
        {"http://shop.example.net/cart", "shop.example.net", "chrome.exe"},
        {"http://mail.example.com/inbox", "mail.example.com", "iexplore.exe"},
    }};
    static const std::array<std::array<const char*, 5>, 3> programs = {{
        {"notepad.exe", "Notepad", "notes.txt - Notepad", "C:\\Windows\\notepad.exe", "Example Software"},
        {"calc.exe", "Calculator", "Calculator", "C:\\Windows\\system32\\calc.exe", "Example Software"},
        {"writer.exe", "Example Writer", "report.doc - Example Writer",
         "C:\\Program Files\\Writer\\writer.exe", "Example Office Ltd"},
    }};
    static const std::array<std::array<const char*, 4>, 3> devices = {{
        {"A:", "Floppy disk drive", "", "(Standard floppy disk drives)"},
        {"D:", "CD-ROM Drive", "BACKUP_2025", "(Standard CD-ROM drives)"},
        {"E:", "USB Mass Storage Device", "STICK", "Example Flash Co"},
    }};
    static const std::array<const char*, 4> subjects = {"Weekly report", "Meeting at 10", "Invoice",
                                                        "Re: Holiday"};

    std::mt19937 rng(20260115); // the same store for the same arguments
    const qint64 end = TimeText::Seconds(now);
    const qint64 span = 30LL * 86400;
    const qint64 step = std::max<qint64>(1, span / std::max(1L, count)); // jitter that keeps the order
    TimeText startText, stopText;
    for (long i = 0; i < count; ++i) {
        // Rows come in time order, as the enforcement side appends them.
        const qint64 start =
            end - span + qint64(double(i) / double(count) * double(span)) + qint64(rng() % step);
        const qint64 stop = start + 5 + rng() % 1800;
        const qint64 uid = Owner(users, int(1 + rng() % std::max<size_t>(1, users.size() - 1)));
        const char* from = startText.Format(start);
        const char* to = stopText.Format(stop);
        bool ok = true;
        switch (i % 4) {
        case 0: {
            const auto& s = sites[rng() % sites.size()];
            ok = url.Text(s[0])
                     .Text(s[1])
                     .Text(s[2])
                     .Num(1000 + rng() % 90000)
                     .Num(5000 + rng() % 900000)
                     .Text(from)
                     .Text(to)
                     .Num(uid)
                     .Row(error);
            break;
        }
        case 1: {
            const auto& p = programs[rng() % programs.size()];
            ok = program.Text(p[0])
                     .Text(p[1])
                     .Text(p[2])
                     .Text(p[3])
                     .Text(p[4])
                     .Text(from)
                     .Text(to)
                     .Num(uid)
                     .Row(error);
            break;
        }
        case 2: {
            const size_t kind = rng() % devices.size();
            const auto& d = devices[kind];
            ok = device.Text(d[0])
                     .Text(d[1])
                     .Text(d[2])
                     .Text(d[3])
                     .Text(from)
                     .Text(to)
                     .Num(qint64(kind))
                     .Num(uid)
                     .Row(error);
            break;
        }
        default: {
            const qint64 type = rng() % 2;
            ok = email.Text(type == 0 ? "staff@example.com" : "partner@example.org")
                     .Text(type == 0 ? "partner@example.org" : "staff@example.com")
                     .Text(rng() % 3 == 0 ? "team@example.com" : "")
                     .Text("")
                     .Text(subjects[rng() % subjects.size()])
                     .Text(from)
                     .Text(rng() % 4 == 0 ? "minutes.pdf" : "")
                     .Num(type)
                     .Num(uid)
                     .Row(error);
            break;
        }
        }
        if (!ok)
            return false;
    }
    return true;
}

} // namespace

QString Store_File_Name() {
    return QStringLiteral("hvpolicy.iil");
}

bool Create_Store(const QString& path, bool force, QString* error) {
    const QFileInfo target(path);
    if (target.exists() && !force)
        return Store::Fail(
            error,
            QStringLiteral("%1 already exists; it was left as it is. Use --force to replace it.").arg(path));
    if (target.isDir())
        return Store::Fail(error, QStringLiteral("%1 is a folder").arg(path));
    if (!QDir().mkpath(target.absolutePath()))
        return Store::Fail(error, QStringLiteral("Cannot create the folder %1").arg(target.absolutePath()));

    // Built aside and moved into place, so a failure never leaves a half-made store behind.
    const QString part = path + QStringLiteral(".part");
    QFile::remove(part);
    bool ok = false;
    {
        Store store;
        // Larger pages: a delete of a million report rows has a quarter of the pages to go through. The page
        // size is set before the write-ahead log, which fixes it.
        ok = store.Open(part, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, error) &&
             store.Exec("PRAGMA page_size=16384", error) && Use_Wal(store, error) &&
             store.Exec("BEGIN", error);
        for (const char* statement : kSchema)
            ok = ok && store.Exec(statement, error);
        ok = ok && store.Exec("COMMIT", error);
    }
    if (ok && target.exists() && !QFile::remove(path))
        ok = Store::Fail(error, QStringLiteral("Cannot replace %1").arg(path));
    if (ok && !QFile::rename(part, path))
        ok = Store::Fail(error, QStringLiteral("Cannot write %1").arg(path));
    if (!ok)
        QFile::remove(part);
    return ok;
}

bool Upgrade_Store(const QString& path, QString* error) {
    const QFileInfo target(path);
    if (!target.exists())
        return Store::Fail(error, QStringLiteral("%1 does not exist; create it first").arg(path));
    if (!target.isFile())
        return Store::Fail(error, QStringLiteral("%1 is not a file").arg(path));
    Store store;
    // A file that is no SQLite store is refused here, before anything is written to it.
    return store.Open(path, SQLITE_OPEN_READWRITE, error) &&
           store.Exec("SELECT COUNT(*) FROM sqlite_master", error) && Use_Wal(store, error);
}

bool Fill_Demo(const QString& path, long reportRows, const QString& osUser, const QDateTime& now,
               QString* error) {
    Store store;
    if (!store.Open(path, SQLITE_OPEN_READWRITE, error) || !store.Exec("PRAGMA synchronous=OFF", error) ||
        !store.Exec("BEGIN", error))
        return false;

    // The OS user comes first, so Single User Mode opens on that user.
    QStringList names;
    if (!osUser.isEmpty())
        names << osUser;
    names << QStringLiteral("jsmith") << QStringLiteral("mgarcia") << QStringLiteral("tnguyen")
          << QStringLiteral("akowalski");
    std::vector<qint64> users{0};
    {
        Insert add(store, "INSERT OR IGNORE INTO USER_TBL (USER_NAME) VALUES (?)");
        for (const QString& name : names) {
            if (!add.Text(name).Row(error))
                return false;
            const qint64 id = sqlite3_changes(store.Db()) ? sqlite3_last_insert_rowid(store.Db()) : -1;
            if (id > 0)
                users.push_back(id);
        }
    }
    if (!Fill_Policy(store, users, error) ||
        !Fill_Reports(store, std::max(0L, reportRows), users, now, error))
        return false;
    return store.Exec("COMMIT", error);
}

} // namespace hv

namespace hv {

namespace {

// The tables and their columns, in the order they are made, of a store opened on `store`.
std::vector<std::pair<QString, QStringList>> Tables_Of(Store& store, QString* error) {
    std::vector<std::pair<QString, QStringList>> tables;
    sqlite3_stmt* raw = nullptr;
    if (sqlite3_prepare_v2(store.Db(), "SELECT name FROM sqlite_master WHERE type='table' ORDER BY rowid", -1,
                           &raw, nullptr) != SQLITE_OK) {
        Store::Fail(error, store.Message());
        return tables;
    }
    std::unique_ptr<sqlite3_stmt, StmtFinalizer> names(raw);
    while (sqlite3_step(names.get()) == SQLITE_ROW)
        tables.emplace_back(
            QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(names.get(), 0))),
            QStringList());
    for (auto& [table, columns] : tables) {
        const QByteArray sql = "SELECT name FROM pragma_table_info('" + table.toUtf8() + "')";
        raw = nullptr;
        if (sqlite3_prepare_v2(store.Db(), sql.constData(), -1, &raw, nullptr) != SQLITE_OK)
            continue;
        std::unique_ptr<sqlite3_stmt, StmtFinalizer> info(raw);
        while (sqlite3_step(info.get()) == SQLITE_ROW)
            columns.append(
                QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(info.get(), 0))));
    }
    return tables;
}

// The first column of each row of a query, as text.
QStringList Column_Texts(Store& store, const char* sql) {
    QStringList texts;
    sqlite3_stmt* raw = nullptr;
    if (sqlite3_prepare_v2(store.Db(), sql, -1, &raw, nullptr) != SQLITE_OK)
        return texts;
    std::unique_ptr<sqlite3_stmt, StmtFinalizer> stmt(raw);
    while (sqlite3_step(stmt.get()) == SQLITE_ROW)
        texts.append(QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(stmt.get(), 0))));
    return texts;
}

} // namespace

QStringList Check_Store(const QString& path) {
    QStringList problems;
    const QFileInfo info(path);
    if (!info.exists())
        return {QStringLiteral("There is no store at %1.").arg(path)};
    if (info.isDir())
        return {QStringLiteral("%1 is a folder, not a store.").arg(path)};
    if (info.size() == 0)
        return {QStringLiteral("%1 is empty: it holds no tables.").arg(path)};

    QString error;
    Store expected;
    if (!expected.Open(QStringLiteral(":memory:"),
                       SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_MEMORY, &error))
        return {error};
    for (const char* statement : kSchema)
        expected.Exec(statement, nullptr);

    Store actual;
    if (!actual.Open(QStringLiteral("file:") + info.absoluteFilePath() + QStringLiteral("?mode=ro"),
                     SQLITE_OPEN_READONLY | SQLITE_OPEN_URI, &error))
        return {error};
    const auto have = Tables_Of(actual, &error);
    if (!error.isEmpty())
        return {QStringLiteral("%1 is not a store the console can read: %2").arg(path, error)};

    for (const auto& [table, columns] : Tables_Of(expected, nullptr)) {
        if (table == QLatin1String("sqlite_sequence"))
            continue;
        const auto found =
            std::find_if(have.begin(), have.end(), [&](const auto& t) { return t.first == table; });
        if (found == have.end()) {
            problems.append(QStringLiteral("The table %1 is missing.").arg(table));
            continue;
        }
        for (const QString& column : columns)
            if (!found->second.contains(column))
                problems.append(QStringLiteral("The table %1 has no column %2.").arg(table, column));
    }
    const auto has = [&](const char* table) {
        return std::any_of(have.begin(), have.end(),
                           [&](const auto& t) { return t.first == QLatin1String(table); });
    };
    if (has("SETTINGS_TBL") &&
        Column_Texts(actual, "SELECT 1 FROM SETTINGS_TBL WHERE SETTINGS_ID=1").isEmpty())
        problems.append(
            QStringLiteral("SETTINGS_TBL has no row with SETTINGS_ID 1: the console cannot keep its "
                           "settings."));
    if (has("USER_TBL")) {
        const QStringList first =
            Column_Texts(actual, "SELECT USER_NAME FROM USER_TBL ORDER BY USER_ID LIMIT 1");
        if (first.isEmpty() || first.front() != QLatin1String("[All Users...]"))
            problems.append(
                QStringLiteral("USER_TBL does not begin with the row \"[All Users...]\": All User "
                               "Mode would edit %1.")
                    .arg(first.isEmpty() ? QStringLiteral("no row")
                                         : QStringLiteral("the user ") + first.front()));
    }
    const QStringList integrity = Column_Texts(actual, "PRAGMA integrity_check");
    if (integrity != QStringList{QStringLiteral("ok")})
        for (const QString& line : integrity.isEmpty() ? QStringList{actual.Message()} : integrity)
            problems.append(QStringLiteral("Integrity check: %1").arg(line));
    return problems;
}

} // namespace hv
