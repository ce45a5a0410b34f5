#include "schedulers/model/Schedules.h"

#include "core/TimeOfDay.h"

#include <array>

namespace hv {

namespace {

const std::array<const char*, 7> kWeekdays = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
const std::array<const char*, 12> kMonths = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                             "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
const std::array<const char*, 7> kWeekdayItems = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                                  "Thursday", "Friday", "Saturday"};
const std::array<const char*, 12> kMonthItems = {"January",   "February", "March",    "April",
                                                 "May",       "June",     "July",     "August",
                                                 "September", "October",  "November", "December"};

const QString kDaily = QStringLiteral("Daily");
const QString kWeekly = QStringLiteral("Weekly");
const QString kMonthly = QStringLiteral("Monthly");

void Append_Name(QString& text, const QString& name) {
    if (!text.isEmpty())
        text += QStringLiteral(", ");
    text += name;
}

template <size_t N> void Mask_To_Text(long mask, QString& text, const std::array<const char*, N>& names) {
    for (size_t i = 0; i < N; ++i)
        if (mask & (1L << i))
            Append_Name(text, QLatin1String(names[i]));
}

template <size_t N> long Names_To_Bits(const QString& text, const std::array<const char*, N>& names) {
    long bits = 0;
    for (size_t i = 0; i < N; ++i)
        if (text.contains(QLatin1String(names[i]), Qt::CaseSensitive))
            bits += 1L << i;
    return bits;
}

template <size_t N>
void Check_From_Text(const QString& text, CheckList& list, const std::array<const char*, N>& names) {
    for (size_t i = 0; i < N; ++i)
        if (text.contains(QLatin1String(names[i]), Qt::CaseSensitive))
            list.Set_Item_Checked(int(i) + 1, true);
}

template <size_t N> void Fill(CheckList& list, const std::array<const char*, N>& items) {
    for (const char* item : items)
        list.Add_Item(QLatin1String(item), QLatin1String(item));
}

} // namespace

QString Schedule_Limit_Message() {
    return QStringLiteral("You cannot add more than ") + QString::number(kMaxSchedules) +
           QStringLiteral(" Schedules.!");
}

bool Schedule_Type_Name(long code, QString& name) {
    name = code == SCHEDULE_DAILY ? kDaily : code == SCHEDULE_WEEKLY ? kWeekly : kMonthly;
    return true;
}

bool Schedule_Type_Code(const QString& name, long& code) {
    code = name == kDaily ? SCHEDULE_DAILY : name == kWeekly ? SCHEDULE_WEEKLY : SCHEDULE_MONTHLY;
    return true;
}

bool Weekday_Mask_To_Text(long mask, QString& text) {
    Mask_To_Text(mask, text, kWeekdays);
    return true;
}

bool Month_Mask_To_Text(long mask, QString& text) {
    Mask_To_Text(mask, text, kMonths);
    return true;
}

bool Checked_Items_To_Text(QString& text, const CheckList& list) {
    for (int i = 1; i <= list.Item_Count(); ++i)
        if (list.Item_Checked(i))
            Append_Name(text, list.Item_Text(i).left(3));
    return true;
}

bool Checked_Items_To_Mask(long& mask, const CheckList& list) {
    for (int i = 1; i <= list.Item_Count(); ++i)
        if (list.Item_Checked(i))
            mask += 1L << (i - 1);
    return true;
}

void Check_Weekdays_From_Text(const QString& text, CheckList& list) {
    Check_From_Text(text, list, kWeekdays);
}

void Check_Months_From_Text(const QString& text, CheckList& list) {
    Check_From_Text(text, list, kMonths);
}

void Fill_Weekday_List(CheckList& list) {
    Fill(list, kWeekdayItems);
}

void Fill_Month_List(CheckList& list) {
    Fill(list, kMonthItems);
}

void Clear_Checks(CheckList& days, CheckList& months) {
    for (CheckList* list : {&days, &months})
        for (int i = 1; i <= list->Item_Count(); ++i)
            list->Set_Item_Checked(i, false);
}

long Weekday_Names_To_Bits(const QString& text) {
    return Names_To_Bits(text, kWeekdays);
}

long Month_Names_To_Bits(const QString& text) {
    return Names_To_Bits(text, kMonths);
}

bool Schedule_Exists(const std::vector<ScheduleRow>& rows, const ScheduleCandidate& c) {
    bool found = false;
    for (const ScheduleRow& r : rows) {
        if (r.type != c.type || r.from != c.from || r.to != c.to)
            continue;
        if (c.type == kDaily || r.days == c.dayText || r.days == c.monthText)
            found = true;
    }
    return found;
}

bool Schedule_Overlaps(const std::vector<ScheduleRow>& rows, const ScheduleCandidate& c) {
    // The texts are "HH:mm", so comparing them as texts compares the times of day.
    bool found = false;
    for (const ScheduleRow& r : rows) {
        if (!(c.from < r.to))
            continue;
        if (!(c.from > r.from || c.to > r.from))
            continue;
        if (r.tag == c.editTag)
            continue;
        if (c.type == kDaily || r.type != c.type || r.type == kDaily) {
            found = true;
            continue;
        }
        if ((Weekday_Names_To_Bits(r.days) & Weekday_Names_To_Bits(c.dayText)) != 0 ||
            (Month_Names_To_Bits(r.days) & Month_Names_To_Bits(c.monthText)) != 0)
            found = true;
    }
    return found;
}

ScheduleVerdict Judge_Schedule(const ScheduleCandidate& c, const QString& selection,
                               const std::vector<ScheduleRow>& rows, bool adding, ScheduleConflictRule rule) {
    if (c.from > c.to)
        return ScheduleVerdict::ToBeforeFrom;
    if (selection.isEmpty() && c.type != kDaily)
        return ScheduleVerdict::NoSelection;
    if (rule(rows, c))
        return ScheduleVerdict::Conflict;
    if (adding && int(rows.size()) >= kMaxSchedules)
        return ScheduleVerdict::Limit;
    return ScheduleVerdict::Accepted;
}

const SchedulerRules& Internet_Scheduler_Rules() {
    // The Internet scheduler refuses exact duplicates only.
    static const SchedulerRules rules{.family = SCH_FOR_INTERNET,
                                      .subType = 0,
                                      .conflicts = Schedule_Exists,
                                      .conflictMessage = "Schedule already exist!.",
                                      .toMessage =
                                          "'To' time should be greater than or equal to 'From' time!."};
    return rules;
}

const SchedulerRules& Application_Scheduler_Rules() {
    static const SchedulerRules rules{.family = SCH_FOR_APPLICATION,
                                      .subType = 1,
                                      .conflicts = Schedule_Overlaps,
                                      .conflictMessage = "Schedule cannot be overlapped!",
                                      .toMessage =
                                          "'To' time should be greater than or equal to 'From' time!"};
    return rules;
}

ScheduleRow Stored_Schedule_Row(const QString& tag, long dwm, const QString& from, const QString& to,
                                long weekdays, long months) {
    ScheduleRow row{
        .type = QString(), .from = Short_Time(from), .to = Short_Time(to), .days = QString(), .tag = tag};
    Schedule_Type_Name(dwm, row.type);
    if (weekdays >= 1)
        Weekday_Mask_To_Text(weekdays, row.days);
    else
        Month_Mask_To_Text(months, row.days);
    return row;
}

} // namespace hv
