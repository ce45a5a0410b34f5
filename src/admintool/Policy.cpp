// policy export / import: the whole policy of an installation as one JSON document, so that a farm of
// terminal servers can share it. Users travel by name: their ids belong to each store.
#include "admintool/AdminStore.h"
#include "admintool/Cli.h"
#include "admintool/Lists.h"
#include "core/TimeOfDay.h"
#include "schedulers/model/Schedules.h"
#include "store/Statements.h"
#include "store/modCommonFuns.h"
#include "store/modDB.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>
#include <QTime>

namespace hv::admin {

namespace {

const QString kFormat = QStringLiteral("HalvenorTS policy");
constexpr int kVersion = 1;

// The subject columns of a user row, with their names in the document. Texts are quoted in statements.
struct UserColumn {
    const char* column;
    const char* key;
    bool text;
};
constexpr UserColumn kUserColumns[] = {
    {"FEATURE_BITS", "featureBits", false},         {"STATUS_BITS", "statusBits", false},
    {"IA_ON_OFF", "internetOnOff", false},          {"SCH_FOR", "internetControl", false},
    {"DEVICE_LOCK", "deviceLock", false},           {"URL_MSG_TYPE", "urlMessageType", false},
    {"BLOCKED_URL_MSG", "blockedUrlMessage", true}, {"REDIRECT_URL", "redirectUrl", true},
    {"APP_MSG_TYPE", "appMessageType", false},      {"APP_BLOCKER_MSG", "appBlockerMessage", true},
};

struct SettingColumn {
    const char* column;
    const char* key;
    bool text;
};
constexpr SettingColumn kSettingColumns[] = {
    {"PROGRAM_MODE", "programMode", false},
    {"CLIENT_OPTIONS", "clientOptions", false},
    {"PWD", "password", true},
    {"REMOTE_MODE", "remoteMode", false},
    {"SERVER_NAME", "serverName", true},
    {"CLIENT_PORT", "clientPort", true},
};

ResultTable Query(const Sql& sql) {
    ResultTable table;
    long rows = 0;
    Ensure(Run_Query(sql, rows, table));
    return table;
}

// "SELECT A,B,C FROM T" from a column table.
template <class Columns> Sql Select(const Columns& columns, const char* table) {
    Sql sql("SELECT ");
    bool first = true;
    for (const auto& c : columns) {
        sql.lit(QLatin1String(first ? "" : ",") + QLatin1String(c.column));
        first = false;
    }
    return sql << " FROM " << ident(QLatin1String(table));
}

template <class Columns> QJsonObject Row_Object(const Columns& columns, const ResultTable& t, int row) {
    QJsonObject o;
    int col = 0;
    for (const auto& c : columns) {
        if (c.text)
            o.insert(QLatin1String(c.key), t.Text(row, col));
        else
            o.insert(QLatin1String(c.key), double(t.Long(row, col)));
        ++col;
    }
    return o;
}

QJsonObject Export_User(const UserRow& user) {
    QJsonObject o = Row_Object(
        kUserColumns, Query(Select(kUserColumns, "USER_TBL") << " WHERE USER_ID=" << num(user.id)), 1);
    o.insert(QStringLiteral("name"), user.name);
    QJsonObject lists;
    for (const NamedList& l : Named_Lists())
        lists.insert(l.name, QJsonArray::fromStringList(Stored_Rules(*l.spec, user.id)));
    o.insert(QStringLiteral("lists"), lists);

    QJsonArray ports;
    const ResultTable p =
        Query(Sql("SELECT PORT_NO,FILTER_TYPE,PROTOCOL_TYPE FROM PORT_TBL WHERE COMPUTER_ID=0 AND USER_ID=")
              << num(user.id));
    for (int i = 1; i <= p.Rows(); ++i)
        ports.append(QJsonObject{{QStringLiteral("port"), double(p.Long(i, 0))},
                                 {QStringLiteral("filterType"), double(p.Long(i, 1))},
                                 {QStringLiteral("protocol"), p.Text(i, 2)}});
    o.insert(QStringLiteral("ports"), ports);

    QJsonArray schedules;
    const ResultTable s = Query(Sql("SELECT SCH_FOR,SCH_SUB_TYPE,D_W_M,WEEKDAYS,MONTHS,FROM_TIME,TO_TIME "
                                    "FROM SCH_TBL WHERE COMPUTER_ID=0 "
                                    "AND USER_ID=")
                                << num(user.id) << " ORDER BY SCH_ID");
    for (int i = 1; i <= s.Rows(); ++i)
        schedules.append(QJsonObject{{QStringLiteral("scheduler"), double(s.Long(i, 0))},
                                     {QStringLiteral("subType"), double(s.Long(i, 1))},
                                     {QStringLiteral("repeat"), double(s.Long(i, 2))},
                                     {QStringLiteral("weekdays"), double(s.Long(i, 3))},
                                     {QStringLiteral("months"), double(s.Long(i, 4))},
                                     {QStringLiteral("from"), s.Text(i, 5)},
                                     {QStringLiteral("to"), s.Text(i, 6)}});
    o.insert(QStringLiteral("schedules"), schedules);
    return o;
}

int Policy_Export(const Invocation& inv) {
    QJsonObject doc{{QStringLiteral("format"), kFormat}, {QStringLiteral("version"), kVersion}};
    doc.insert(QStringLiteral("settings"),
               Row_Object(kSettingColumns,
                          Query(Select(kSettingColumns, "SETTINGS_TBL") << " WHERE SETTINGS_ID=1"), 1));
    QJsonArray users;
    for (const UserRow& u : Users())
        users.append(Export_User(u));
    doc.insert(QStringLiteral("users"), users);
    QJsonArray exceptions;
    const ResultTable e = Query(stmt::Get_Exception_Users());
    for (int i = 1; i <= e.Rows(); ++i)
        exceptions.append(e.Text(i, 0));
    doc.insert(QStringLiteral("exceptions"), exceptions);

    QSaveFile file(inv.words[0]);
    if (!file.open(QIODevice::WriteOnly) || file.write(QJsonDocument(doc).toJson()) < 0 || !file.commit())
        throw Refusal{QStringLiteral("Cannot write %1: %2").arg(inv.words[0], file.errorString())};
    return kExitOk;
}

// ---- import: everything is checked first; a file with one bad value changes nothing.

struct Checker {
    QStringList problems;
    void Fail(const QString& where, const QString& why) {
        problems.append(where + QStringLiteral(": ") + why);
    }

    // A whole number within bounds.
    bool Number(const QJsonObject& o, const QString& key, const QString& where, qint64 low, qint64 high) {
        const QJsonValue v = o.value(key);
        const double d = v.toDouble(-1e300);
        if (!v.isDouble() || d != double(qint64(d)) || d < double(low) || d > double(high)) {
            Fail(where + u'.' + key,
                 QStringLiteral("a whole number from %1 to %2 is needed").arg(low).arg(high));
            return false;
        }
        return true;
    }
    // A text the store's statements can carry.
    bool Text(const QJsonObject& o, const QString& key, const QString& where) {
        const QJsonValue v = o.value(key);
        if (!v.isString()) {
            Fail(where + u'.' + key, QStringLiteral("a text is needed"));
            return false;
        }
        if (v.toString().contains(u'\'') || v.toString().contains(QChar(0))) {
            Fail(where + u'.' + key, QStringLiteral("an apostrophe or NUL cannot be stored"));
            return false;
        }
        return true;
    }
};

// Rows copied between users carry seconds; both forms are times of day.
bool Is_Time(const QString& t) {
    return Time_Of_Day(t).isValid();
}

void Check_Settings(Checker& c, const QJsonObject& s) {
    const QString where = QStringLiteral("settings");
    c.Number(s, QStringLiteral("programMode"), where, 0, 1);
    c.Number(s, QStringLiteral("clientOptions"), where, 0, 0xFFFFFFFFLL);
    c.Number(s, QStringLiteral("remoteMode"), where, 0, 0x7FFFFFFF);
    if (c.Text(s, QStringLiteral("password"), where) &&
        !Is_Valid_Password(s.value(QStringLiteral("password")).toString()))
        c.Fail(where + QStringLiteral(".password"), QStringLiteral("Please enter a valid password"));
    if (c.Text(s, QStringLiteral("serverName"), where) &&
        !Is_Valid_Server_Name(s.value(QStringLiteral("serverName")).toString()))
        c.Fail(where + QStringLiteral(".serverName"), QStringLiteral("Please enter a valid server name"));
    if (c.Text(s, QStringLiteral("clientPort"), where)) {
        bool ok = false;
        const long port = s.value(QStringLiteral("clientPort")).toString().toLong(&ok);
        if (!ok || !Is_Valid_Port(port))
            c.Fail(where + QStringLiteral(".clientPort"), QStringLiteral("Please enter a valid port number"));
    }
}

// Each user's windows are judged as the scheduler pages would judge them added one after another: a file
// cannot bring in what the console would refuse.
void Check_Windows(Checker& c, const QJsonArray& schedules, const QString& where) {
    for (const SchedulerRules* rules : {&Internet_Scheduler_Rules(), &Application_Scheduler_Rules()}) {
        std::vector<ScheduleRow> rows;
        for (int i = 0; i < schedules.size(); ++i) {
            const QJsonObject s = schedules[i].toObject();
            if (long(s.value(QStringLiteral("scheduler")).toDouble()) != rules->family)
                continue;
            const auto n = [&](const char* key) { return long(s.value(QLatin1String(key)).toDouble()); };
            const ScheduleRow row = Stored_Schedule_Row(
                QString::number(i), n("repeat"), s.value(QStringLiteral("from")).toString(),
                s.value(QStringLiteral("to")).toString(), n("weekdays"), n("months"));
            ScheduleCandidate candidate{.from = row.from,
                                        .to = row.to,
                                        .type = row.type,
                                        .dayText = QString(),
                                        .monthText = QString(),
                                        .editTag = QString()};
            Weekday_Mask_To_Text(n("weekdays"), candidate.dayText);
            Month_Mask_To_Text(n("months"), candidate.monthText);
            const QString selection = n("repeat") == SCHEDULE_WEEKLY    ? candidate.dayText
                                      : n("repeat") == SCHEDULE_MONTHLY ? candidate.monthText
                                                                        : QString();
            const QString at = where + QStringLiteral(".schedules[%1]").arg(i);
            switch (Judge_Schedule(candidate, selection, rows, true, rules->conflicts)) {
            case ScheduleVerdict::ToBeforeFrom:
                c.Fail(at, QLatin1String(rules->toMessage));
                break;
            case ScheduleVerdict::NoSelection:
                c.Fail(at, QStringLiteral("a Weekly or Monthly window needs its days or months"));
                break;
            case ScheduleVerdict::Conflict:
                c.Fail(at, QLatin1String(rules->conflictMessage));
                break;
            case ScheduleVerdict::Limit:
                c.Fail(at, Schedule_Limit_Message());
                break;
            case ScheduleVerdict::Accepted:
                rows.push_back(row);
                break;
            }
        }
    }
}

void Check_User(Checker& c, const QJsonObject& u, const QString& where) {
    if (c.Text(u, QStringLiteral("name"), where) &&
        !Is_Valid_User_Name(u.value(QStringLiteral("name")).toString()))
        c.Fail(where + QStringLiteral(".name"), QStringLiteral("Please enter a valid User Name!"));
    for (const UserColumn& col : kUserColumns) {
        if (col.text)
            c.Text(u, QLatin1String(col.key), where);
        else
            c.Number(u, QLatin1String(col.key), where, 0, 0x7FFFFFFF);
    }
    const QJsonObject lists = u.value(QStringLiteral("lists")).toObject();
    for (auto it = lists.begin(); it != lists.end(); ++it) {
        const RuleListSpec* spec = Find_List(it.key());
        const QString at = where + QStringLiteral(".lists.") + it.key();
        if (!spec) {
            c.Fail(at, QStringLiteral("no such list"));
            continue;
        }
        const QJsonArray rules = it.value().toArray();
        for (int i = 0; i < rules.size(); ++i) {
            const QString why = rules[i].isString() ? Refusal_Of(*spec, rules[i].toString())
                                                    : QStringLiteral("a text is needed");
            if (!why.isEmpty())
                c.Fail(at + QStringLiteral("[%1]").arg(i), why);
        }
    }
    const QJsonArray ports = u.value(QStringLiteral("ports")).toArray();
    for (int i = 0; i < ports.size(); ++i) {
        const QString at = where + QStringLiteral(".ports[%1]").arg(i);
        const QJsonObject p = ports[i].toObject();
        c.Number(p, QStringLiteral("port"), at, 0, 65535);
        c.Number(p, QStringLiteral("filterType"), at, 0, 65535);
        c.Text(p, QStringLiteral("protocol"), at);
    }
    const QJsonArray schedules = u.value(QStringLiteral("schedules")).toArray();
    for (int i = 0; i < schedules.size(); ++i) {
        const QString at = where + QStringLiteral(".schedules[%1]").arg(i);
        const QJsonObject s = schedules[i].toObject();
        c.Number(s, QStringLiteral("scheduler"), at, 1, 2);
        c.Number(s, QStringLiteral("subType"), at, 0, 1);
        c.Number(s, QStringLiteral("repeat"), at, 1, 3);
        c.Number(s, QStringLiteral("weekdays"), at, 0, 0x7FFFFFFF);
        c.Number(s, QStringLiteral("months"), at, 0, 0x7FFFFFFF);
        for (const QString& key : {QStringLiteral("from"), QStringLiteral("to")})
            if (c.Text(s, key, at) && !Is_Time(s.value(key).toString()))
                c.Fail(at + u'.' + key, QStringLiteral("a time as HH:mm is needed"));
    }
    Check_Windows(c, schedules, where);
}

QJsonObject Read_Document(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw Refusal{QStringLiteral("Cannot read %1: %2").arg(path, file.errorString())};
    QJsonParseError error{};
    const QJsonDocument doc = QJsonDocument::fromJson(file.readAll(), &error);
    if (doc.isNull() || !doc.isObject())
        throw Refusal{QStringLiteral("%1 is not a policy file: %2").arg(path, error.errorString())};
    const QJsonObject o = doc.object();
    if (o.value(QStringLiteral("format")).toString() != kFormat)
        throw Refusal{QStringLiteral("%1 is not a policy file").arg(path)};
    if (o.value(QStringLiteral("version")).toInt() != kVersion)
        throw Refusal{QStringLiteral("%1 is a policy file of version %2; this tool reads version %3")
                          .arg(path)
                          .arg(o.value(QStringLiteral("version")).toInt())
                          .arg(kVersion)};
    return o;
}

void Check_Document(const QJsonObject& doc) {
    Checker c;
    Check_Settings(c, doc.value(QStringLiteral("settings")).toObject());
    const QJsonArray users = doc.value(QStringLiteral("users")).toArray();
    QSet<QString> names;
    for (int i = 0; i < users.size(); ++i) {
        const QJsonObject u = users[i].toObject();
        const QString where = QStringLiteral("users[%1]").arg(i);
        Check_User(c, u, where);
        const QString upper = u.value(QStringLiteral("name")).toString().toUpper();
        if (names.contains(upper))
            c.Fail(where + QStringLiteral(".name"), QStringLiteral("User Name already exists!"));
        names.insert(upper);
    }
    if (users.isEmpty())
        c.Fail(QStringLiteral("users"), QStringLiteral("the policy of all users is missing"));
    const QJsonArray exceptions = doc.value(QStringLiteral("exceptions")).toArray();
    for (int i = 0; i < exceptions.size(); ++i)
        if (!exceptions[i].isString() || !Is_Valid_User_Name(exceptions[i].toString()))
            c.Fail(QStringLiteral("exceptions[%1]").arg(i),
                   QStringLiteral("Please enter a valid User Name!"));
    if (!c.problems.isEmpty()) {
        for (const QString& p : c.problems)
            Note(QStringLiteral("halvenorts-admin: ") + p);
        throw Refusal{QStringLiteral("The policy file was not imported: %1 problem(s); nothing was changed.")
                          .arg(c.problems.size())};
    }
}

// One connection and one transaction for the whole import; any failure rolls everything back.
class Transaction final {
public:
    Transaction() : m_handle(Db_Open(Get_Db_Path())) {
        if (m_handle == 0)
            throw StoreFailed{};
        Run(Sql("BEGIN IMMEDIATE TRANSACTION"));
    }
    ~Transaction() {
        if (!m_done) {
            long rows = 0;
            Db_Exec(m_handle, Sql("ROLLBACK TRANSACTION"), m_result, rows);
        }
        Db_Close(m_handle);
    }
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    const ResultTable& Run(const Sql& sql) {
        long rows = 0;
        Ensure(Db_Exec(m_handle, sql, m_result, rows));
        return m_result;
    }
    void Commit() {
        Run(Sql("COMMIT TRANSACTION"));
        m_done = true;
    }
    int Handle() const { return m_handle; }
    ResultTable& Result() { return m_result; }

private:
    int m_handle;
    ResultTable m_result;
    bool m_done = false;
};

template <class Columns> Sql Update(const Columns& columns, const char* table, const QJsonObject& o) {
    Sql sql("UPDATE ");
    sql << ident(QLatin1String(table)) << " SET ";
    bool first = true;
    for (const auto& c : columns) {
        sql.lit(QLatin1String(first ? "" : ",") + QLatin1String(c.column) + u'=');
        if (c.text)
            sql << "'" << txt(o.value(QLatin1String(c.key)).toString()) << "'";
        else
            sql << num(qint64(o.value(QLatin1String(c.key)).toDouble()));
        first = false;
    }
    return sql;
}

long Import_User(Transaction& t, const QJsonObject& u, bool first, bool replace) {
    const QString name = u.value(QStringLiteral("name")).toString();
    long id = -1;
    const std::vector<UserRow> users = Users();
    // The file's first user is the policy of all users: it lands on this store's first row, whatever its
    // name.
    if (first && !users.empty())
        id = users.front().id;
    for (const UserRow& row : users)
        if (id < 0 && row.name.compare(name, Qt::CaseInsensitive) == 0)
            id = row.id;
    if (id < 0) {
        t.Run(stmt::Add_User_Insert(name));
        id = long(t.Run(stmt::Add_User_Lookup(name)).Long(1, 0));
    }
    t.Run(Update(kUserColumns, "USER_TBL", u) << " WHERE USER_ID=" << num(id));
    if (replace) {
        for (const NamedList& l : Named_Lists())
            t.Run(Sql("DELETE FROM ")
                  << ident(QLatin1String(l.spec->table)) << " WHERE COMPUTER_ID=0 AND USER_ID=" << num(id));
        t.Run(Sql("DELETE FROM PORT_TBL WHERE COMPUTER_ID=0 AND USER_ID=") << num(id));
        t.Run(Sql("DELETE FROM SCH_TBL WHERE COMPUTER_ID=0 AND USER_ID=") << num(id));
    }
    const QJsonObject lists = u.value(QStringLiteral("lists")).toObject();
    for (auto it = lists.begin(); it != lists.end(); ++it) {
        const RuleListSpec& spec = *Find_List(it.key());
        QStringList have = replace ? QStringList() : Stored_Rules(spec, id);
        for (const QJsonValue& v : it.value().toArray()) {
            // The bypass list takes repeats as new rows, so a repeat is left out here.
            if (Is_Bypass(spec) && have.contains(v.toString()))
                continue;
            Ensure(Add_Rule(t.Handle(), t.Result(), spec, id, v.toString()));
            have.append(v.toString());
        }
    }
    for (const QJsonValue& v : u.value(QStringLiteral("ports")).toArray()) {
        const QJsonObject p = v.toObject();
        const long port = long(p.value(QStringLiteral("port")).toDouble());
        const long type = long(p.value(QStringLiteral("filterType")).toDouble());
        const QString protocol = p.value(QStringLiteral("protocol")).toString();
        const bool exists =
            !replace && t.Run(Sql("SELECT COUNT(*) FROM PORT_TBL WHERE PORT_NO=")
                              << num(port) << " AND FILTER_TYPE=" << num(type) << " AND PROTOCOL_TYPE='"
                              << txt(protocol) << "' AND COMPUTER_ID=0 AND USER_ID=" << num(id))
                                .Long(1, 0) > 0;
        if (!exists)
            t.Run(stmt::Add_Port(port, type, protocol, 0, id));
    }
    for (const QJsonValue& v : u.value(QStringLiteral("schedules")).toArray()) {
        const QJsonObject s = v.toObject();
        auto n = [&](const char* key) { return long(s.value(QLatin1String(key)).toDouble()); };
        const QString from = s.value(QStringLiteral("from")).toString();
        const QString to = s.value(QStringLiteral("to")).toString();
        const bool exists =
            !replace && t.Run(stmt::Add_Schedule_Lookup(n("scheduler"), n("subType"), n("repeat"),
                                                        n("weekdays"), n("months"), from, to, 0, id))
                                .Rows() > 0;
        if (!exists)
            t.Run(stmt::Add_Schedule_Insert(n("scheduler"), n("subType"), n("repeat"), n("weekdays"),
                                            n("months"), from, to, 0, id));
    }
    return id;
}

int Policy_Import(const Invocation& inv) {
    const QJsonObject doc = Read_Document(inv.words[0]);
    Check_Document(doc);
    const bool replace = inv.Has(QStringLiteral("--replace"));

    Transaction t;
    t.Run(Update(kSettingColumns, "SETTINGS_TBL", doc.value(QStringLiteral("settings")).toObject())
          << " WHERE SETTINGS_ID=1");
    QSet<long> kept;
    const QJsonArray users = doc.value(QStringLiteral("users")).toArray();
    for (int i = 0; i < users.size(); ++i)
        kept.insert(Import_User(t, users[i].toObject(), i == 0, replace));
    if (replace) {
        // A user the file does not name goes as the users page removes one: its row only.
        for (const UserRow& u : Users())
            if (!kept.contains(u.id))
                t.Run(stmt::Remove_User(u.id));
        t.Run(Sql("DELETE FROM USER_EXCPN_TBL"));
    }
    for (const QJsonValue& v : doc.value(QStringLiteral("exceptions")).toArray())
        if (t.Run(stmt::Is_New_Exception_User(v.toString())).Long(1, 0) == 0)
            t.Run(stmt::Add_Exception_User_Insert(v.toString()));
    t.Commit();
    return kExitOk;
}

} // namespace

void Add_Policy_Commands(std::vector<Command>& into) {
    const QString policy = QStringLiteral("policy");
    into.push_back({policy,
                    QStringLiteral("export"),
                    QStringLiteral("policy export FILE"),
                    QStringLiteral("Writes the whole policy (settings, users, every list, ports, schedules, "
                                   "messages, device locks, exceptions; no report rows) to FILE as JSON."),
                    {},
                    {},
                    1,
                    1,
                    Policy_Export});
    into.push_back(
        {policy,
         QStringLiteral("import"),
         QStringLiteral("policy import FILE [--replace]"),
         QStringLiteral("Applies a policy file in one transaction after checking all of it: a file "
                        "with one bad value changes nothing. Users are matched by name; the file's "
                        "first user is this store's all-users row. Without --replace lists, ports, "
                        "schedules and exceptions are added to what is there; with --replace they "
                        "and the users the file does not name are replaced."),
         {},
         {QStringLiteral("--replace")},
         1,
         1,
         Policy_Import});
}

} // namespace hv::admin
