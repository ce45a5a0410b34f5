#pragma once
// The permission windows of both schedulers: the codes and masks of a SCH_TBL row, the texts a page's list
// shows for them, the conversions between the two, and the two acceptance rules. The Internet scheduler
// refuses exact duplicates only; the Application scheduler refuses overlapping windows. Both rules work on
// the texts the list shows, not on the store.
#include "core/CheckList.h"
#include "core/TimeOfDay.h"

#include <QString>
#include <vector>

namespace hv {

// SCH_FOR of a SCH_TBL row: which scheduler owns it.
inline constexpr long SCH_FOR_INTERNET = 1;
inline constexpr long SCH_FOR_APPLICATION = 2;
// SCH_FOR of a USER_TBL row: the subject's internet control mode.
inline constexpr long INTERNET_MODE_MANUAL = 1;
inline constexpr long INTERNET_MODE_SCHEDULER = 2;

// D_W_M, the repeat kind.
inline constexpr long SCHEDULE_DAILY = 1;
inline constexpr long SCHEDULE_WEEKLY = 2;
inline constexpr long SCHEDULE_MONTHLY = 3;

// The rows one subject may keep in one scheduler; the refusal's text is built from the same number.
inline constexpr int kMaxSchedules = 20;
QString Schedule_Limit_Message();

// 1 "Daily", 2 "Weekly", anything else "Monthly"; and back: anything but "Daily" and "Weekly" is 3.
bool Schedule_Type_Name(long code, QString& name);
bool Schedule_Type_Code(const QString& name, long& code);
// Appends the three-letter names of the set bits (Sun..Sat, Jan..Dec) to text, ", " between them.
bool Weekday_Mask_To_Text(long mask, QString& text);
bool Month_Mask_To_Text(long mask, QString& text);
// Appends the first three letters of each checked item, in list order, ", " between them.
bool Checked_Items_To_Text(QString& text, const CheckList& list);
// Adds 2^(index-1) for each checked item to what mask already holds.
bool Checked_Items_To_Mask(long& mask, const CheckList& list);
// Checks the items whose three-letter name is found in text (case-sensitive); never unchecks.
void Check_Weekdays_From_Text(const QString& text, CheckList& list);
void Check_Months_From_Text(const QString& text, CheckList& list);
void Fill_Weekday_List(CheckList& list);
void Fill_Month_List(CheckList& list);
void Clear_Checks(CheckList& days, CheckList& months);
// The bits of every three-letter name found in text, from 0.
long Weekday_Names_To_Bits(const QString& text);
long Month_Names_To_Bits(const QString& text);

// One row of a schedule list as it shows: type name, From, To, Day/Months, and its tag (SCH_ID).
struct ScheduleRow {
    QString type;
    QString from;
    QString to;
    QString days;
    QString tag;
};

// The window a press would store, taken from the controls in this order: From, To, Type, the texts of
// the day and month combo boxes; editTag is the tag of the type combo (the row being edited, or empty).
struct ScheduleCandidate {
    QString from;
    QString to;
    QString type;
    QString dayText;
    QString monthText;
    QString editTag;
};

// The duplicate rule: same type, From and To, and for Weekly or Monthly the same Day/Months text as the
// day or the month combo box. Every row counts, also the one being edited.
bool Schedule_Exists(const std::vector<ScheduleRow>& rows, const ScheduleCandidate& c);
// The overlap rule, with strict comparisons; the row whose tag is the edited one never conflicts.
bool Schedule_Overlaps(const std::vector<ScheduleRow>& rows, const ScheduleCandidate& c);

using ScheduleConflictRule = bool (*)(const std::vector<ScheduleRow>&, const ScheduleCandidate&);

// What a press of Add or Save comes to, in the order the tests run.
enum class ScheduleVerdict {
    ToBeforeFrom, // refused with the page's 'To' message
    NoSelection,  // Weekly or Monthly with nothing checked: nothing at all happens
    Conflict,     // refused with the page's conflict message
    Limit,        // Add only: the list is full
    Accepted,
};

// `selection` is the checked text of the list that belongs to the type (empty for Daily).
ScheduleVerdict Judge_Schedule(const ScheduleCandidate& c, const QString& selection,
                               const std::vector<ScheduleRow>& rows, bool adding, ScheduleConflictRule rule);

// What a scheduler judges its windows by: the rows it owns, the sub-type it writes, its conflict rule and
// the words of its refusals. The pages and the command-line tool share them.
struct SchedulerRules {
    long family;  // SCH_FOR of the rows
    long subType; // SCH_SUB_TYPE of the rows it writes
    ScheduleConflictRule conflicts;
    const char* conflictMessage;
    const char* toMessage;
};
const SchedulerRules& Internet_Scheduler_Rules();
const SchedulerRules& Application_Scheduler_Rules();

// A stored row as the lists show it: the type's name, times as "HH:mm", the days, or the months when no
// day is set.
ScheduleRow Stored_Schedule_Row(const QString& tag, long dwm, const QString& from, const QString& to,
                                long weekdays, long months);

} // namespace hv
