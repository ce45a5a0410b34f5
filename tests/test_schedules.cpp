// The schedule texts and masks, and the two acceptance rules, without a window: a check list here is a
// plain vector of items.
#include "schedulers/model/Schedules.h"

#include <gtest/gtest.h>

namespace {

using namespace hv;

class FakeCheckList final : public CheckList {
public:
    std::vector<std::pair<QString, bool>> items;
    int Item_Count() const override { return int(items.size()); }
    QString Item_Text(int i) const override { return items.at(size_t(i - 1)).first; }
    bool Item_Checked(int i) const override { return items.at(size_t(i - 1)).second; }
    void Set_Item_Checked(int i, bool on) override { items.at(size_t(i - 1)).second = on; }
    void Add_Item(const QString& key, const QString& text) override {
        EXPECT_EQ(key, text);
        items.emplace_back(text, false);
    }
};

TEST(ScheduleModel, TypeNamesAndCodesTakeEveryOtherValueAsMonthly) {
    // clang-format off
    for (const auto& [code, want] : std::vector<std::pair<long, QString>>{{1, "Daily"}, {2, "Weekly"}, {3, "Monthly"}, {0, "Monthly"}, {-5, "Monthly"}, {99, "Monthly"}}) {
        QString name = "old";
        EXPECT_TRUE(Schedule_Type_Name(code, name));
        EXPECT_EQ(name, want) << code;
    }
    for (const auto& [name, want] : std::vector<std::pair<QString, long>>{{"Daily", 1}, {"Weekly", 2}, {"Monthly", 3}, {"daily", 3}, {"", 3}, {"Weekly ", 3}}) {
        // clang-format on
        long code = 0;
        EXPECT_TRUE(Schedule_Type_Code(name, code));
        EXPECT_EQ(code, want) << name.toStdString();
    }
}

// The texts of the stored masks, given back by the check lists and by the names alone.
TEST(ScheduleModel, MasksBecomeAbbreviationsThatCheckListsAndNamesGiveBack) {
    FakeCheckList days, months;
    Fill_Weekday_List(days);
    Fill_Month_List(months);
    ASSERT_EQ(days.Item_Count(), 7);
    ASSERT_EQ(months.Item_Count(), 12);
    EXPECT_EQ(days.Item_Text(1), "Sunday");
    EXPECT_EQ(months.Item_Text(9), "September");
    const struct {
        long mask;
        bool months;
        QString before, want;
    } cases[] = {
        // clang-format off
        {1, false, "", "Sun"}, {10, false, "", "Mon, Wed"}, {65, false, "", "Sun, Sat"},
        {127, false, "", "Sun, Mon, Tue, Wed, Thu, Fri, Sat"},
        {0, false, "", ""},
        {64 + 128, false, "", "Sat"}, // bits above Saturday are no day
        {1, false, "Fri", "Fri, Sun"}, // appended to what the text holds
        {1, true, "", "Jan"}, {2048 + 1, true, "", "Jan, Dec"}, {48, true, "", "May, Jun"},
        {4095, true, "", "Jan, Feb, Mar, Apr, May, Jun, Jul, Aug, Sep, Oct, Nov, Dec"},
        {0, true, "x", "x"},
    }; // clang-format on
    for (const auto& c : cases) {
        QString text = c.before;
        EXPECT_TRUE(c.months ? Month_Mask_To_Text(c.mask, text) : Weekday_Mask_To_Text(c.mask, text));
        EXPECT_EQ(text, c.want) << c.mask;
        if (!c.before.isEmpty() || c.mask > (c.months ? 4095 : 127))
            continue;
        FakeCheckList& list = c.months ? months : days;
        Clear_Checks(days, months);
        (c.months ? Check_Months_From_Text : Check_Weekdays_From_Text)(text, list);
        QString listed;
        long back = 0;
        Checked_Items_To_Text(listed, list);
        Checked_Items_To_Mask(back, list);
        EXPECT_EQ(listed, text) << c.mask;
        EXPECT_EQ(back, c.mask) << c.mask;
        EXPECT_EQ((c.months ? Month_Names_To_Bits : Weekday_Names_To_Bits)(text), c.mask) << c.mask;
    }

    // The mask adds to what it is given; the text is appended; checking from text never unchecks and
    // looks for the names as case-sensitive parts of the text.
    Clear_Checks(days, months);
    days.Set_Item_Checked(7, true);
    Check_Weekdays_From_Text("mon,Tuesday", days);
    long mask = 100;
    Checked_Items_To_Mask(mask, days);
    EXPECT_EQ(mask, 100 + 4 + 64);
    QString text = "Sun";
    Checked_Items_To_Text(text, days);
    EXPECT_EQ(text, "Sun, Tue, Sat");
    Clear_Checks(days, months);
    for (int i = 1; i <= 7; ++i)
        EXPECT_FALSE(days.Item_Checked(i));
    EXPECT_EQ(Weekday_Names_To_Bits("Jan, Feb, Mar"), 0);
    EXPECT_EQ(Month_Names_To_Bits("Sun, Mon"), 0);
}

TEST(ScheduleModel, StoredTimesShowAsTwentyFourHourHoursAndMinutes) {
    const std::vector<std::pair<QString, QString>> cases = {
        {"08:00", "08:00"}, {"08:00:00", "08:00"}, {"8:05", "08:05"}, {"23:59:59", "23:59"},
        {"00:00", "00:00"}, {" 09:30 ", "09:30"},  {"noon", "noon"},  {"", ""},
        {"25:00", "25:00"},
    };
    for (const auto& [stored, shown] : cases)
        EXPECT_EQ(Short_Time(stored), shown) << stored.toStdString();
}

// A candidate written with only the fields a case needs.
struct Cand {
    ScheduleCandidate c;
    Cand(const char* from, const char* to, const char* type, const char* days = "", const char* months = "",
         const char* tag = "")
        : c{from, to, type, days, months, tag} {}
};

ScheduleRow Row(const char* type, const char* from, const char* to, const char* days = "",
                const char* tag = "1") {
    return {type, from, to, days, tag};
}

// The internet scheduler refuses only exact texts (the edited row counts too); the application scheduler
// refuses strict overlaps, comparing days only within one type and passing over the edited row.
TEST(ScheduleModel, DuplicateAndOverlapRulesJudgeEveryRow) {
    struct Case {
        const char* what;
        std::vector<ScheduleRow> rows;
        Cand c;
        bool exists, overlaps;
    };
    // clang-format off
    const Case cases[] = {
        {"touching after", {Row("Daily", "08:00", "09:00")}, {"09:00", "10:00", "Daily"}, false, false},
        {"touching before", {Row("Daily", "08:00", "09:00")}, {"07:00", "08:00", "Daily"}, false, false},
        {"equal window", {Row("Daily", "08:00", "09:00")}, {"08:00", "09:00", "Daily"}, true, true},
        {"inside", {Row("Daily", "08:00", "09:00")}, {"08:15", "08:45", "Daily"}, false, true},
        {"around", {Row("Daily", "08:00", "09:00")}, {"07:00", "10:00", "Daily"}, false, true},
        {"shifted", {Row("Daily", "08:00", "09:00")}, {"08:30", "09:30", "Daily"}, false, true},
        {"other To", {Row("Daily", "08:00", "09:00")}, {"08:00", "09:01", "Daily"}, false, true},
        {"no length at R.From", {Row("Daily", "08:00", "09:00")}, {"08:00", "08:00", "Daily"}, false, false},
        {"no length inside", {Row("Daily", "08:00", "09:00")}, {"08:30", "08:30", "Daily"}, false, true},
        {"no length at R.To", {Row("Daily", "08:00", "09:00")}, {"09:00", "09:00", "Daily"}, false, false},
        {"row of no length, t strictly inside", {Row("Daily", "08:30", "08:30")}, {"08:00", "09:00", "Daily"}, false, true},
        {"two rows of no length", {Row("Daily", "08:30", "08:30")}, {"08:30", "08:30", "Daily"}, true, false},
        {"edited row itself", {Row("Daily", "08:00", "09:00", "", "5")}, {"08:00", "09:00", "Daily", "", "", "5"}, true, false},
        {"other row than the edited", {Row("Daily", "08:00", "09:00", "", "5")}, {"08:00", "09:00", "Daily", "", "", "6"}, true, true},
        {"a later row matches", {Row("Daily", "10:00", "11:00"), Row("Daily", "08:00", "09:00", "", "2")}, {"08:00", "09:00", "Daily"}, true, true},
        {"daily ignores leftover day text", {Row("Daily", "08:00", "09:00")}, {"08:00", "09:00", "Daily", "Mon"}, true, true},
        {"weekly same days", {Row("Weekly", "08:00", "09:00", "Mon, Tue")}, {"08:00", "09:00", "Weekly", "Mon, Tue"}, true, true},
        {"weekly part of the days", {Row("Weekly", "08:00", "09:00", "Mon, Tue")}, {"08:00", "09:00", "Weekly", "Mon"}, false, true},
        {"weekly other day", {Row("Weekly", "08:00", "09:00", "Mon")}, {"08:00", "09:00", "Weekly", "Tue"}, false, false},
        {"weekly shared day", {Row("Weekly", "08:00", "09:00", "Mon, Wed")}, {"08:00", "09:00", "Weekly", "Tue, Wed"}, false, true},
        {"weekly days, times apart", {Row("Weekly", "08:00", "09:00", "Mon")}, {"10:00", "11:00", "Weekly", "Mon"}, false, false},
        {"monthly by the month text", {Row("Monthly", "08:00", "09:00", "Jan")}, {"08:00", "09:00", "Monthly", "", "Jan"}, true, true},
        {"monthly other month", {Row("Monthly", "08:00", "09:00", "Jan")}, {"08:00", "09:00", "Monthly", "", "Feb"}, false, false},
        {"monthly shared month", {Row("Monthly", "08:00", "09:00", "Jan, Mar")}, {"08:00", "09:00", "Monthly", "", "Mar"}, false, true},
        {"other type, same text", {Row("Weekly", "08:00", "09:00", "Mon")}, {"08:00", "09:00", "Monthly", "", "Mon"}, false, true},
        {"weekly against monthly", {Row("Monthly", "08:00", "09:00", "Jan")}, {"08:00", "09:00", "Weekly", "Mon"}, false, true},
        {"monthly against weekly", {Row("Weekly", "08:00", "09:00", "Mon")}, {"08:00", "09:00", "Monthly", "", "Jan"}, false, true},
        {"weekly against daily row", {Row("Daily", "08:00", "09:00")}, {"08:00", "09:00", "Weekly", "Mon"}, false, true},
        {"daily against weekly row", {Row("Weekly", "08:00", "09:00", "Sat")}, {"08:30", "10:00", "Daily"}, false, true},
    };
    // clang-format on
    // All rows are visited: a harmless row before or after does not hide a conflict.
    const ScheduleRow apart = Row("Daily", "20:00", "21:00", "", "99");
    for (const Case& c : cases) {
        std::vector<ScheduleRow> among = {apart};
        among.insert(among.end(), c.rows.begin(), c.rows.end());
        among.push_back(apart);
        for (const auto& rows : {c.rows, among}) {
            EXPECT_EQ(Schedule_Exists(rows, c.c.c), c.exists) << c.what;
            EXPECT_EQ(Schedule_Overlaps(rows, c.c.c), c.overlaps) << c.what;
        }
    }
}

TEST(ScheduleModel, PressesAreJudgedInOrderTimeSelectionConflictLimit) {
    const std::vector<ScheduleRow> one = {Row("Daily", "08:00", "09:00")};
    std::vector<ScheduleRow> full;
    for (int i = 0; i < kMaxSchedules; ++i)
        full.push_back(Row("Weekly", "08:00", "09:00", "Mon", ""));
    std::vector<ScheduleRow> almost(full.begin(), full.end() - 1);
    const struct {
        const char* what;
        Cand c;
        QString selection;
        const std::vector<ScheduleRow>* rows;
        bool adding;
        ScheduleConflictRule rule;
        ScheduleVerdict want;
    } cases[] = {
        // clang-format off
        {"over midnight", {"22:00", "06:00", "Daily"}, "", &one, true, Schedule_Exists, ScheduleVerdict::ToBeforeFrom},
        {"to before from wins over no selection", {"10:00", "09:00", "Weekly"}, "", &one, true, Schedule_Exists, ScheduleVerdict::ToBeforeFrom},
        {"no length is legal", {"10:00", "10:00", "Daily"}, "", &one, true, Schedule_Exists, ScheduleVerdict::Accepted},
        {"weekly with nothing checked", {"08:00", "09:00", "Weekly"}, "", &one, true, Schedule_Overlaps, ScheduleVerdict::NoSelection},
        {"monthly with nothing checked", {"08:00", "09:00", "Monthly"}, "", &one, true, Schedule_Exists, ScheduleVerdict::NoSelection},
        {"duplicate", {"08:00", "09:00", "Daily"}, "", &one, true, Schedule_Exists, ScheduleVerdict::Conflict},
        {"overlap", {"08:30", "09:30", "Daily"}, "", &one, true, Schedule_Overlaps, ScheduleVerdict::Conflict},
        {"conflict before the limit", {"08:00", "09:00", "Weekly", "Mon"}, "Mon", &full, true, Schedule_Exists, ScheduleVerdict::Conflict},
        {"the 21st add", {"10:00", "11:00", "Weekly", "Mon"}, "Mon", &full, true, Schedule_Exists, ScheduleVerdict::Limit},
        {"the 20th add", {"10:00", "11:00", "Weekly", "Mon"}, "Mon", &almost, true, Schedule_Exists, ScheduleVerdict::Accepted},
        {"a save at 20", {"10:00", "11:00", "Weekly", "Mon"}, "Mon", &full, false, Schedule_Exists, ScheduleVerdict::Accepted},
    };
    // clang-format on
    for (const auto& c : cases)
        EXPECT_EQ(Judge_Schedule(c.c.c, c.selection, *c.rows, c.adding, c.rule), c.want) << c.what;
    EXPECT_EQ(Schedule_Limit_Message(), "You cannot add more than 20 Schedules.!");
}

} // namespace
