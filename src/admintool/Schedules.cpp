// schedules: a user's permission windows of either scheduler, judged by the pages' own rules; and
// effective: what applies to a user at a moment.
#include "schedulers/model/Schedules.h"
#include "admintool/AdminStore.h"
#include "admintool/Cli.h"
#include "admintool/Lists.h"
#include "core/TimeOfDay.h"
#include "store/Bits.h"
#include "store/modDBFunctions.h"

#include <QDateTime>

namespace hv::admin {

namespace {

const SchedulerRules& Named_Scheduler(const Invocation& inv) {
    const QString name = inv.Need(QStringLiteral("--scheduler"));
    if (name == QLatin1String("internet"))
        return Internet_Scheduler_Rules();
    if (name == QLatin1String("application"))
        return Application_Scheduler_Rules();
    throw UsageError{QStringLiteral("unknown scheduler '%1' (internet or application)").arg(name)};
}

struct StoredSchedule {
    ScheduleRow row;
    long weekdays = 0;
    long months = 0;
    long dwm = 0;
};

std::vector<StoredSchedule> Stored_Schedules(const SchedulerRules& rules, long user) {
    ResultTable t;
    long rows = 0;
    Ensure(Get_Schedules(rules.family, 0, user, t, rows));
    std::vector<StoredSchedule> list;
    for (int i = 1; i <= int(rows); ++i) {
        const long dwm = long(t.Long(i, 1)), weekdays = long(t.Long(i, 4)), months = long(t.Long(i, 5));
        list.push_back({Stored_Schedule_Row(t.Text(i, 0), dwm, t.Text(i, 2), t.Text(i, 3), weekdays, months),
                        weekdays, months, dwm});
    }
    return list;
}

std::vector<ScheduleRow> Rows_Of(const std::vector<StoredSchedule>& stored) {
    std::vector<ScheduleRow> rows;
    for (const StoredSchedule& s : stored)
        rows.push_back(s.row);
    return rows;
}

QString Line(const ScheduleRow& r) {
    return r.tag + u'\t' + r.type + u'\t' + r.from + u'\t' + r.to + u'\t' + r.days;
}

int Schedules_List(const Invocation& inv) {
    const SchedulerRules& rules = Named_Scheduler(inv);
    for (const StoredSchedule& s : Stored_Schedules(rules, Find_User(inv.Need(QStringLiteral("--user"))).id))
        Out(Line(s.row));
    return kExitOk;
}

QString Time_Option(const Invocation& inv, const QString& option) {
    const QTime t = Time_Of_Day(inv.Need(option));
    if (!t.isValid())
        throw Refusal{
            QStringLiteral("%1 '%2' is not a time of day (HH:mm).").arg(option, inv.Option(option))};
    return t.toString(QStringLiteral("HH:mm"));
}

int Schedules_Add(const Invocation& inv) {
    const SchedulerRules& rules = Named_Scheduler(inv);
    const long user = Find_User(inv.Need(QStringLiteral("--user"))).id;
    long dwm = 0;
    const QString type = inv.Need(QStringLiteral("--type"));
    Schedule_Type_Code(type, dwm);
    QString typeName;
    Schedule_Type_Name(dwm, typeName);
    if (typeName != type)
        throw UsageError{QStringLiteral("unknown type '%1' (Daily, Weekly or Monthly)").arg(type)};
    // The days and months are written as the check lists show them, so the rules compare like texts.
    const long weekdays =
        dwm == SCHEDULE_WEEKLY ? Weekday_Names_To_Bits(inv.Option(QStringLiteral("--days"))) : 0;
    const long months =
        dwm == SCHEDULE_MONTHLY ? Month_Names_To_Bits(inv.Option(QStringLiteral("--months"))) : 0;
    ScheduleCandidate c{.from = Time_Option(inv, QStringLiteral("--from")),
                        .to = Time_Option(inv, QStringLiteral("--to")),
                        .type = typeName,
                        .dayText = QString(),
                        .monthText = QString(),
                        .editTag = QString()};
    Weekday_Mask_To_Text(weekdays, c.dayText);
    Month_Mask_To_Text(months, c.monthText);
    const QString selection = dwm == SCHEDULE_WEEKLY    ? c.dayText
                              : dwm == SCHEDULE_MONTHLY ? c.monthText
                                                        : QString();
    switch (Judge_Schedule(c, selection, Rows_Of(Stored_Schedules(rules, user)), true, rules.conflicts)) {
    case ScheduleVerdict::ToBeforeFrom:
        throw Refusal{QLatin1String(rules.toMessage)};
    case ScheduleVerdict::NoSelection:
        // The page lets such a press pass without a word; a script is told what is missing.
        throw Refusal{dwm == SCHEDULE_WEEKLY
                          ? QStringLiteral("A Weekly schedule needs --days (Sun, Mon, ...).")
                          : QStringLiteral("A Monthly schedule needs --months (Jan, Feb, ...).")};
    case ScheduleVerdict::Conflict:
        throw Refusal{QLatin1String(rules.conflictMessage)};
    case ScheduleVerdict::Limit:
        throw Refusal{Schedule_Limit_Message()};
    case ScheduleVerdict::Accepted:
        break;
    }
    ResultTable table;
    Ensure(Add_Schedule(rules.family, rules.subType, dwm, weekdays, months, c.from, c.to, 0, user, table));
    Out(table.Text(1, 0));
    return kExitOk;
}

int Schedules_Remove(const Invocation& inv) {
    const SchedulerRules& rules = Named_Scheduler(inv);
    const long user = Find_User(inv.Need(QStringLiteral("--user"))).id;
    for (const StoredSchedule& s : Stored_Schedules(rules, user)) {
        if (s.row.tag == inv.words[0]) {
            Ensure(Remove_Schedule(s.row.tag.toLong()));
            return kExitOk;
        }
    }
    throw Refusal{QStringLiteral("The user has no %1 schedule with the id %2.")
                      .arg(inv.Option(QStringLiteral("--scheduler")), inv.words[0])};
}

// ---- effective

// The window holds the moment: its repeat matches the day and the time lies from its start up to, but
// not including, its end (windows that touch do not overlap).
bool Holds(const StoredSchedule& s, const QDateTime& at) {
    const QString now = at.time().toString(QStringLiteral("HH:mm"));
    if (!(s.row.from <= now && now < s.row.to))
        return false;
    if (s.dwm == SCHEDULE_WEEKLY)
        return (s.weekdays >> (at.date().dayOfWeek() % 7)) & 1;
    if (s.dwm == SCHEDULE_MONTHLY)
        return (s.months >> (at.date().month() - 1)) & 1;
    return true;
}

const StoredSchedule* Window_At(const std::vector<StoredSchedule>& windows, const QDateTime& at) {
    for (const StoredSchedule& s : windows)
        if (Holds(s, at))
            return &s;
    return nullptr;
}

QString Window_Words(const StoredSchedule& s) {
    return QStringLiteral("window %1: %2 %3-%4%5")
        .arg(s.row.tag, s.row.type, s.row.from, s.row.to,
             s.row.days.isEmpty() ? QString() : u' ' + s.row.days);
}

QString Device_Words(long lock) {
    const char* devices[] = {"floppy", "CD/DVD", "USB mass storage"};
    QStringList parts;
    for (int i = 0; i < 3; ++i) {
        const long field = (lock >> (2 * i)) & 3;
        const char* state = field == 0   ? "locked"
                            : field == 1 ? "unlocked"
                            : field == 3 ? "read only"
                                         : "unknown (2)";
        parts.append(QStringLiteral("%1 %2").arg(QLatin1String(devices[i]), QLatin1String(state)));
    }
    return parts.join(QStringLiteral(", "));
}

int Effective(const Invocation& inv) {
    QDateTime at = QDateTime::currentDateTime();
    if (inv.options.contains(QStringLiteral("--at"))) {
        at = QDateTime::fromString(inv.Option(QStringLiteral("--at")), QStringLiteral("yyyy-MM-dd HH:mm"));
        if (!at.isValid())
            throw UsageError{QStringLiteral("--at needs a moment as \"yyyy-MM-dd HH:mm\"")};
    }
    const UserRow asked = Find_User(inv.Need(QStringLiteral("--user")));
    // In All User Mode every user lives by the first row's policy.
    long mode = 0;
    Ensure(Get_Program_Mode(mode));
    const std::vector<UserRow> users = Users();
    const UserRow subject = mode == 0 && !users.empty() ? users.front() : asked;
    Out(QStringLiteral("User: %1 at %2").arg(asked.name, at.toString(QStringLiteral("yyyy-MM-dd HH:mm"))));
    Out(mode == 0 ? QStringLiteral("Policy: %1 (All User Mode)").arg(subject.name)
                  : QStringLiteral("Policy: %1 (Single User Mode)").arg(subject.name));

    long control = 0, onOff = 0;
    Ensure(Get_Schedule_For(0, subject.id, control));
    Ensure(Get_Internet_On_Off(0, subject.id, onOff));
    if (control == INTERNET_MODE_SCHEDULER) {
        const auto windows = Stored_Schedules(Internet_Scheduler_Rules(), subject.id);
        const StoredSchedule* w = Window_At(windows, at);
        Out(w ? QStringLiteral("Internet: on (scheduler, %1)").arg(Window_Words(*w))
              : QStringLiteral("Internet: off (scheduler, outside its %1 window(s))").arg(windows.size()));
    } else {
        Out(onOff == 1 ? QStringLiteral("Internet: on (manual mode)")
                       : QStringLiteral("Internet: off (manual mode)"));
    }

    long bits = 0;
    Ensure(Load_Feature_Bits(0, subject.id, bits));
    for (const NamedList& l : Named_Lists()) {
        const long count = long(Stored_Rules(*l.spec, subject.id).size());
        const QString state = l.spec->featureBit == 0       ? QStringLiteral("always applies")
                              : (bits & l.spec->featureBit) ? QStringLiteral("enabled")
                                                            : QStringLiteral("disabled");
        Out(QStringLiteral("List %1: %2, %3 rule(s)").arg(l.name, state).arg(count));
    }
    if (bits & FEATURE_APP_SCHEDULER) {
        const StoredSchedule* w = Window_At(Stored_Schedules(Application_Scheduler_Rules(), subject.id), at);
        Out(w ? QStringLiteral("Blocked applications: allowed now (%1)").arg(Window_Words(*w))
              : QStringLiteral(
                    "Blocked applications: blocked now (no application window holds this moment)"));
    } else {
        Out(QStringLiteral("Blocked applications: blocked (the application scheduler is off)"));
    }
    long lock = 0;
    Ensure(Get_Device_Lock(0, subject.id, lock));
    Out(QStringLiteral("Devices: ") + Device_Words(lock));
    long type = 0;
    QString text;
    Ensure(Get_App_Message(0, subject.id, type, text));
    Out(type == 1 ? QStringLiteral("Blocked-application message: message box \"%1\"").arg(text)
                  : QStringLiteral("Blocked-application message: none (blocked silently)"));
    return kExitOk;
}

} // namespace

void Add_Schedule_Commands(std::vector<Command>& into) {
    const QString group = QStringLiteral("schedules");
    const QStringList subject = {QStringLiteral("--user"), QStringLiteral("--scheduler")};
    into.push_back(
        {group,
         QStringLiteral("list"),
         QStringLiteral("schedules list --user U --scheduler internet|application"),
         QStringLiteral("Prints a user's windows: id, type, from, to, days or months, tab-separated."),
         subject,
         {},
         0,
         0,
         Schedules_List});
    into.push_back(
        {group,
         QStringLiteral("add"),
         QStringLiteral(
             "schedules add --user U --scheduler S --type Daily|Weekly|Monthly --from HH:mm --to HH:mm "
             "[--days \"Mon, Tue\"] [--months \"Jan, Feb\"]"),
         QStringLiteral(
             "Adds a permission window under the page's rules: the internet scheduler refuses an exact "
             "duplicate, the application scheduler any overlap, both more than 20 windows. Prints the "
             "new window's id."),
         subject + QStringList{QStringLiteral("--type"), QStringLiteral("--from"), QStringLiteral("--to"),
                               QStringLiteral("--days"), QStringLiteral("--months")},
         {},
         0,
         0,
         Schedules_Add});
    into.push_back({group,
                    QStringLiteral("remove"),
                    QStringLiteral("schedules remove --user U --scheduler S ID"),
                    QStringLiteral("Removes one of the user's windows by its id."),
                    subject,
                    {},
                    1,
                    1,
                    Schedules_Remove});
    into.push_back(
        {QStringLiteral("effective"),
         QString(),
         QStringLiteral("effective --user U [--at \"yyyy-MM-dd HH:mm\"]"),
         QStringLiteral("Says what applies to the user at that moment (default: now): whose policy (All "
                        "User Mode gives everyone the first row's), internet on or off and why, each "
                        "list's switch and rule count, blocked applications, the device lock and the "
                        "blocked-application message. A window holds from its start up to its end."),
         {QStringLiteral("--user"), QStringLiteral("--at")},
         {},
         0,
         0,
         Effective});
}

} // namespace hv::admin
