#pragma once
// The two scheduler pages in one: a list of permission windows of the subject, each Add, Save and Remove
// going to the store at once, with the type, the two times and the drop-down check lists of days and
// months above it. What tells the Internet and the Application scheduler apart is in their description:
// the scheduler's codes, the acceptance rule and its words, how edit mode is left, when the list column
// gives up room for the scroll bar, the enable box, and the internet mode half with its Apply and its
// question on closing, which only the Internet scheduler has.
#include "schedulers/model/Schedules.h"
#include "store/modDB.h"
#include "ui/CheckList.h"
#include "ui/Controls.h"
#include "ui/Form.h"
#include "ui/ListView.h"
#include "ui/PageSwitches.h"
#include "ui/TimePicker.h"

#include <QBoxLayout>
#include <QGroupBox>
#include <array>

namespace hv {

struct SchedulerDescription {
    const char* formName;
    const char* title; // the caption's start, the frame's caption and the copy settings word
    const SchedulerRules& rules;

    const char* frame;
    const char* container;
    const char* list;
    const char* listIcon;
    const char* imageList;

    // The enable check box: its name, caption and bit; the Internet scheduler's is never shown.
    const char* enableBox;
    const char* enableCaption;
    long enableBit;
    bool enableBoxShown;

    struct ToolTips {
        const char* scheduler;
        const char* from;
        const char* to;
        const char* day;
        const char* months;
        const char* enable;
    } toolTips;

    // Internet: leaving a check list ends edit mode, and Remove clears the check lists before it asks.
    bool checkListLeaveEndsEdit;
    bool removeClearsChecksFirst;
    // Application: the type's tag holds the edited row only while editing, and the focus on the schedule
    // list ends edit mode.
    bool tagOnlyWhileEditing;
    // The list's fourth column gives up room for the scroll bar beyond this many rows.
    int allowanceRows;
    // The internet mode half: three options, Apply, and the question on closing with Apply enabled.
    bool modeHalf;
};

class SchedulerPage : public ui::Form {
    Q_OBJECT
public:
    explicit SchedulerPage(const SchedulerDescription& description);

    ui::Label* lblScheduler;
    ui::ComboBox* cboScheduler;
    ui::Label* lblFrom;
    ui::TimePicker* dtpkFromTime;
    ui::Label* lblTo;
    ui::TimePicker* dtpkToTime;
    ui::Label* lblDayMonths;
    ui::ComboBox* cboDay;
    ui::ComboBox* cboMonths;
    ui::CommandButton* cmAdd;
    ui::CommandButton* cmdEdit;
    ui::CommandButton* cmdRemove;
    ui::CommandButton* cmdCopySettings;
    ui::ListView* lvwSchedules;
    ui::CheckBox* chkEnable;
    ui::CommandButton* cmdClose;
    // The mode half, only where the description has it.
    std::array<ui::OptionButton*, 3> optInternetMode{};
    std::array<ui::Label*, 3> picInternetMode{};
    ui::CommandButton* cmdApply = nullptr;

protected:
    void Form_Load() override;
    void Form_KeyPress(int& KeyAscii) override;
    void Form_QueryUnload(int& Cancel, int UnloadMode) override;

private:
    const SchedulerDescription& d;
    QGroupBox* fraScheduler;
    QWidget* picContainer;
    ui::CheckListView m_days;
    ui::CheckListView m_months;
    ui::ImageList* ilsSchedules;
    ColumnAllowance m_allowance;

    void Build_Mode_Half(QBoxLayout* layout);

    void cboScheduler_Click();
    void cboDay_GotFocus();
    void cboMonths_GotFocus();
    void Check_List_Changed(ui::CheckListView& list, ui::ComboBox* combo);
    void Check_List_Item_Click(ui::CheckListView& list, ui::ComboBox* combo, int index);
    void Check_List_LostFocus();
    void Schedule_List_GotFocus();
    void cmAdd_Click();
    void cmdEdit_Click();
    void cmdRemove_Click();
    void cmdApply_Click();
    void cmdClose_Click();

    void Init_Columns();
    void Set_Tool_Tips();
    void Init_Controls();
    void Load_Schedules();
    void Load_Pictures();
    void Set_Controls_Enabled();
    void Load_Internet_Mode();
    void Clear_Day_Month_Selection();
    std::vector<ScheduleRow> Rows() const;
    ScheduleCandidate Candidate() const;
    // D_W_M and both masks, as they stand on the controls at the moment of writing.
    void Masks(long& dwm, long& weekdays, long& months) const;
    ResultTable Add_Schedule_Row(const ScheduleCandidate& c);
    void Update_Schedule_Row(const ScheduleCandidate& c);
    void Add_Mode_Captions();
    int First_Selected_Row() const;
};

} // namespace hv
