#include "schedulers/frmSchedulerPage.h"

#include "core/clsLog.h"
#include "core/modGlobal.h"
#include "platform/Platform.h"
#include "store/Bits.h"
#include "store/modDBFunctions.h"
#include "ui/Session.h"

#include <QApplication>
#include <QGridLayout>
#include <QStyle>
#include <QVBoxLayout>

namespace hv {

namespace {

// Design sizes in twips; the list's columns are taken from them.
constexpr int kTypeWidth = 1575;
constexpr int kPickerWidth = 1335;
constexpr int kComboWidth = 2400;
constexpr int kListWidth = 7200;
constexpr int kListHeight = 3000;
constexpr int kDaysHeight = 1800;
constexpr int kMonthsHeight = 2850;

const QString kAdd = QStringLiteral("Add");
const QString kSave = QStringLiteral("Save");
const QString kEdit = QStringLiteral("Edit");
const QString kCancel = QStringLiteral("Cancel");
const QString kDaily = QStringLiteral("Daily");
const QString kWeekly = QStringLiteral("Weekly");
const QString kMonthly = QStringLiteral("Monthly");

QString S(const char* text) {
    return QLatin1String(text);
}

void Fix_Width(QWidget* w, int twips) {
    w->setFixedWidth(ui::Twips_To_Pixels(twips));
}

// The combo box holds one entry at most: the joined abbreviations of what is checked.
void Show_Single_Entry(ui::ComboBox* combo, const QString& text) {
    combo->Clear_Items();
    combo->Add_Item(text);
    combo->Set_ListIndex(0);
}

} // namespace

SchedulerPage::SchedulerPage(const SchedulerDescription& description)
    : ui::Form(QLatin1String(description.formName)), d(description),
      m_days(QStringLiteral("lvwDays"), this, kComboWidth, kDaysHeight),
      m_months(QStringLiteral("lvwMonths"), this, kComboWidth, kMonthsHeight) {
    KeyPreview = true;
    ilsSchedules = new ui::ImageList(S(d.imageList), this);
    QStyle* style = QApplication::style();
    ilsSchedules->Add(S(d.listIcon), style->standardIcon(QStyle::SP_FileDialogDetailedView));

    fraScheduler = new QGroupBox(S(d.title), this);
    fraScheduler->setObjectName(S(d.frame));
    auto* frameLayout = new QVBoxLayout(fraScheduler);
    picContainer = new QWidget(fraScheduler);
    picContainer->setObjectName(S(d.container));
    frameLayout->addWidget(picContainer);

    auto* grid = new QGridLayout(picContainer);
    lblScheduler = new ui::Label(QStringLiteral("lblScheduler"), QStringLiteral("Scheduler:"), picContainer);
    cboScheduler = new ui::ComboBox(QStringLiteral("cboScheduler"), ui::ComboBox::DropDownList, picContainer);
    for (const QString& type : {kDaily, kWeekly, kMonthly})
        cboScheduler->Add_Item(type);
    lblFrom = new ui::Label(QStringLiteral("lblFrom"), QStringLiteral("From:"), picContainer);
    dtpkFromTime = new ui::TimePicker(QStringLiteral("dtpkFromTime"), picContainer);
    lblTo = new ui::Label(QStringLiteral("lblTo"), QStringLiteral("To:"), picContainer);
    dtpkToTime = new ui::TimePicker(QStringLiteral("dtpkToTime"), picContainer);
    lblDayMonths = new ui::Label(QStringLiteral("lblDayMonths"), QStringLiteral("Day/Months:"), picContainer);
    cboDay = new ui::ComboBox(QStringLiteral("cboDay"), ui::ComboBox::DropDownList, picContainer);
    cboMonths = new ui::ComboBox(QStringLiteral("cboMonths"), ui::ComboBox::DropDownList, picContainer);
    Fix_Width(cboScheduler, kTypeWidth);
    Fix_Width(dtpkFromTime, kPickerWidth);
    Fix_Width(dtpkToTime, kPickerWidth);
    Fix_Width(cboDay, kComboWidth);
    Fix_Width(cboMonths, kComboWidth);
    grid->addWidget(lblScheduler, 0, 0);
    grid->addWidget(cboScheduler, 1, 0);
    grid->addWidget(lblFrom, 0, 1);
    grid->addWidget(dtpkFromTime, 1, 1);
    grid->addWidget(lblTo, 0, 2);
    grid->addWidget(dtpkToTime, 1, 2);
    grid->addWidget(lblDayMonths, 0, 3);
    // The two combo boxes stand in the same spot; the type shows one of them.
    grid->addWidget(cboDay, 1, 3);
    grid->addWidget(cboMonths, 1, 3);
    cmAdd = new ui::CommandButton(QStringLiteral("cmAdd"), kAdd, picContainer);
    grid->addWidget(cmAdd, 1, 4);

    lvwSchedules = new ui::ListView(S(d.list), ui::ListView::Report, picContainer);
    lvwSchedules->Set_Size_Twips(kListWidth, kListHeight);
    for (const char* caption : {"Scheduler", "From", "To", "Day/Months"})
        lvwSchedules->Add_Column(S(caption), 0);
    lvwSchedules->Set_Multi_Select(true);
    lvwSchedules->Set_Hide_Selection(false);
    lvwSchedules->Set_Small_Icons(ilsSchedules);
    grid->addWidget(lvwSchedules, 2, 0, 4, 4);
    cmdEdit = new ui::CommandButton(QStringLiteral("cmdEdit"), kEdit, picContainer);
    cmdRemove = new ui::CommandButton(QStringLiteral("cmdRemove"), QStringLiteral("Remove"), picContainer);
    cmdCopySettings = new ui::CommandButton(QStringLiteral("cmdCopySettings"),
                                            QStringLiteral("Copy Settings"), picContainer);
    grid->addWidget(cmdEdit, 2, 4);
    grid->addWidget(cmdRemove, 3, 4);
    grid->addWidget(cmdCopySettings, 5, 4);
    grid->setRowStretch(4, 1);

    chkEnable = new ui::CheckBox(S(d.enableBox), S(d.enableCaption), this);
    cmdClose = new ui::CommandButton(QStringLiteral("cmdClose"), QStringLiteral("Close"), this);

    auto* layout = new QVBoxLayout(this);
    auto* top = new QHBoxLayout;
    top->addStretch(1);
    top->addWidget(chkEnable);
    layout->addLayout(top);
    layout->addWidget(fraScheduler);
    if (d.modeHalf)
        Build_Mode_Half(layout);
    auto* bottom = new QHBoxLayout;
    bottom->addStretch(1);
    if (cmdApply)
        bottom->addWidget(cmdApply);
    bottom->addWidget(cmdClose);
    layout->addLayout(bottom);
    // The Internet scheduler's box is kept for its tool tip and bit only: nobody reaches it.
    if (!d.enableBoxShown) {
        chkEnable->setVisible(false);
        chkEnable->setEnabled(false);
    }
    m_days.lvw->raise();
    m_months.lvw->raise();

    m_allowance = ColumnAllowance{.list = lvwSchedules, .column = 4, .limit = d.allowanceRows};

    connect(cboScheduler, &ui::ComboBox::Click, this, [this] { Guarded([this] { cboScheduler_Click(); }); });
    m_days.Replace_List_Of(cboDay);
    m_months.Replace_List_Of(cboMonths);
    ui::Set_GotFocus(cboDay, [this] { Guarded([this] { cboDay_GotFocus(); }); });
    ui::Set_GotFocus(cboMonths, [this] { Guarded([this] { cboMonths_GotFocus(); }); });
    for (auto [list, combo] : {std::pair{&m_days, cboDay}, std::pair{&m_months, cboMonths}}) {
        connect(list->lvw, &ui::ListView::ItemCheck, this,
                [this, list, combo](int) { Guarded([&] { Check_List_Changed(*list, combo); }); });
        connect(list->lvw, &ui::ListView::ItemClick, this, [this, list, combo](int index) {
            Guarded([&] { Check_List_Item_Click(*list, combo, index); });
        });
        if (d.checkListLeaveEndsEdit)
            ui::Set_LostFocus(list->lvw, [this] { Guarded([this] { Check_List_LostFocus(); }); });
    }
    if (d.tagOnlyWhileEditing)
        ui::Set_GotFocus(lvwSchedules, [this] { Guarded([this] { Schedule_List_GotFocus(); }); });
    connect(cmAdd, &ui::CommandButton::Click, this, [this] { Guarded([this] { cmAdd_Click(); }); });
    connect(cmdEdit, &ui::CommandButton::Click, this, [this] { Guarded([this] { cmdEdit_Click(); }); });
    connect(cmdRemove, &ui::CommandButton::Click, this, [this] { Guarded([this] { cmdRemove_Click(); }); });
    connect(cmdCopySettings, &ui::CommandButton::Click, this,
            [this] { Show_Page(QStringLiteral("frmCopySettings"), S(d.title)); });
    connect(chkEnable, &ui::CheckBox::Click, this,
            [this] { ui::Enable_Feature_Click(chkEnable, S(d.title), d.enableBit); });
    connect(cmdClose, &ui::CommandButton::Click, this, [this] { cmdClose_Click(); });
}

// ---- load

void SchedulerPage::Form_Load() {
    Guarded([this] {
        Init_Columns();
        Set_Tool_Tips();
        Init_Controls();
        Load_Schedules();
        if (d.modeHalf) {
            Load_Pictures();
            Load_Internet_Mode();
            return;
        }
        Set_Controls_Enabled();
        Load_Pictures();
        const Subject subject = Current_Subject();
        if (Is_Feature_Bit_Set(subject.computerId, subject.userId, d.enableBit))
            ui::Check_Silently(chkEnable, 1);
    });
}

void SchedulerPage::Init_Columns() {
    Set_Caption(S(d.title) + QStringLiteral(" - ") + Current_User_Text());
    lvwSchedules->Set_Column_Width(1, kTypeWidth);
    lvwSchedules->Set_Column_Width(2, kPickerWidth);
    lvwSchedules->Set_Column_Width(3, kPickerWidth);
    lvwSchedules->Set_Column_Width(4, lvwSchedules->Width_Twips() - kTypeWidth - 2 * kPickerWidth - 20);
}

void SchedulerPage::Set_Tool_Tips() {
    cboScheduler->setToolTip(S(d.toolTips.scheduler));
    dtpkFromTime->setToolTip(S(d.toolTips.from));
    dtpkToTime->setToolTip(S(d.toolTips.to));
    cboDay->setToolTip(S(d.toolTips.day));
    cboMonths->setToolTip(S(d.toolTips.months));
    chkEnable->setToolTip(S(d.toolTips.enable));
}

void SchedulerPage::Init_Controls() {
    cboScheduler->Set_ListIndex(0);
    const QTime now = platform().Now().time();
    dtpkFromTime->Set_Value(now);
    dtpkToTime->Set_Value(now);
    Fill_Weekday_List(m_days);
    Fill_Month_List(m_months);
}

void SchedulerPage::Load_Schedules() {
    const Subject subject = Current_Subject();
    ResultTable table;
    long rows = 0;
    if (!Get_Schedules(d.rules.family, subject.computerId, subject.userId, table, rows))
        return;
    for (int i = 1; i <= int(rows); ++i) {
        const ScheduleRow row =
            Stored_Schedule_Row(table.Text(i, 0), long(table.Long(i, 1)), table.Text(i, 2), table.Text(i, 3),
                                long(table.Long(i, 4)), long(table.Long(i, 5)));
        const int item = lvwSchedules->Add(QString(), S(d.listIcon));
        lvwSchedules->Set_Tag(item, row.tag);
        lvwSchedules->Set_Text(item, row.type);
        lvwSchedules->Set_Sub_Item(item, 1, row.from);
        lvwSchedules->Set_Sub_Item(item, 2, row.to);
        lvwSchedules->Set_Sub_Item(item, 3, row.days);
    }
    m_allowance.After_Load();
}

void SchedulerPage::Load_Pictures() {
    cmdCopySettings->Set_Picture(QApplication::style()->standardIcon(QStyle::SP_FileDialogContentsView));
    if (!d.modeHalf)
        return;
    const QStyle::StandardPixmap pictures[] = {QStyle::SP_DialogYesButton, QStyle::SP_DialogNoButton,
                                               QStyle::SP_BrowserReload};
    for (size_t i = 0; i < 3; ++i)
        picInternetMode[i]->Set_Picture(QApplication::style()->standardIcon(pictures[i]), 16);
}

void SchedulerPage::Set_Controls_Enabled() {
    ui::Enable_Unless_Remote(
        {cmAdd, cmdEdit, cmdRemove, cboScheduler, dtpkFromTime, dtpkToTime, cboDay, cboMonths, chkEnable});
    if (d.modeHalf)
        ui::Enable_Unless_Remote({optInternetMode[0], optInternetMode[1], optInternetMode[2], cmdApply});
}

// ---- the type and the check lists

void SchedulerPage::cboScheduler_Click() {
    const int type = cboScheduler->ListIndex();
    lblDayMonths->setVisible(type == 1 || type == 2);
    cboDay->setVisible(type == 1);
    cboMonths->setVisible(type == 2);
    Clear_Day_Month_Selection();
}

void SchedulerPage::Clear_Day_Month_Selection() {
    m_days.Hide();
    m_months.Hide();
    cboDay->Clear_Items();
    cboMonths->Clear_Items();
    Clear_Checks(m_days, m_months);
}

void SchedulerPage::cboDay_GotFocus() {
    m_months.Hide();
    m_days.Drop_Down(cboDay);
}

void SchedulerPage::cboMonths_GotFocus() {
    m_days.Hide();
    m_months.Drop_Down(cboMonths);
}

void SchedulerPage::Check_List_Changed(ui::CheckListView& list, ui::ComboBox* combo) {
    QString text;
    Checked_Items_To_Text(text, list);
    Show_Single_Entry(combo, text);
}

void SchedulerPage::Check_List_Item_Click(ui::CheckListView& list, ui::ComboBox* combo, int index) {
    if (list.lvw->Selected(index))
        list.Set_Item_Checked(index, !list.Item_Checked(index));
    Check_List_Changed(list, combo);
}

void SchedulerPage::Add_Mode_Captions() {
    cmdEdit->setText(kEdit);
    cmAdd->setText(kAdd);
}

void SchedulerPage::Check_List_LostFocus() {
    m_days.Hide();
    m_months.Hide();
    Add_Mode_Captions();
    cmdRemove->setEnabled(!Remote_Mode);
}

void SchedulerPage::Schedule_List_GotFocus() {
    Check_List_LostFocus();
    ui::Set_Tag(cboScheduler, QString());
}

// ---- Add, Save, Edit, Cancel, Remove

std::vector<ScheduleRow> SchedulerPage::Rows() const {
    std::vector<ScheduleRow> rows;
    for (int i = 1; i <= lvwSchedules->Count(); ++i)
        rows.push_back({lvwSchedules->Text(i), lvwSchedules->Sub_Item(i, 1), lvwSchedules->Sub_Item(i, 2),
                        lvwSchedules->Sub_Item(i, 3), lvwSchedules->Tag(i)});
    return rows;
}

ScheduleCandidate SchedulerPage::Candidate() const {
    return {.from = dtpkFromTime->Value_Text(),
            .to = dtpkToTime->Value_Text(),
            .type = cboScheduler->Text(),
            .dayText = cboDay->Text(),
            .monthText = cboMonths->Text(),
            .editTag = ui::Tag(cboScheduler)};
}

void SchedulerPage::Masks(long& dwm, long& weekdays, long& months) const {
    Schedule_Type_Code(cboScheduler->Text(), dwm);
    weekdays = 0;
    months = 0;
    Checked_Items_To_Mask(weekdays, m_days);
    Checked_Items_To_Mask(months, m_months);
}

ResultTable SchedulerPage::Add_Schedule_Row(const ScheduleCandidate& c) {
    long dwm = 0, weekdays = 0, months = 0;
    Masks(dwm, weekdays, months);
    const Subject subject = Current_Subject();
    ResultTable table;
    Add_Schedule(d.rules.family, d.rules.subType, dwm, weekdays, months, c.from, c.to, subject.computerId,
                 subject.userId, table);
    return table;
}

void SchedulerPage::Update_Schedule_Row(const ScheduleCandidate& c) {
    long dwm = 0, weekdays = 0, months = 0;
    Masks(dwm, weekdays, months);
    Update_Schedule(ui::Tag_Number(ui::Tag(cboScheduler)), d.rules.subType, dwm, weekdays, months, c.from, c.to);
}

int SchedulerPage::First_Selected_Row() const {
    for (int i = 1; i <= lvwSchedules->Count(); ++i)
        if (lvwSchedules->Selected(i))
            return i;
    return 0;
}

void SchedulerPage::cmAdd_Click() {
    const ScheduleCandidate c = Candidate();
    QString selection;
    if (c.type == kWeekly)
        Checked_Items_To_Text(selection, m_days);
    else if (c.type == kMonthly)
        Checked_Items_To_Text(selection, m_months);
    const bool adding = cmAdd->text() == kAdd;
    switch (Judge_Schedule(c, selection, Rows(), adding, d.rules.conflicts)) {
    case ScheduleVerdict::ToBeforeFrom:
        MsgBox(S(d.rules.toMessage), MsgStyle::Exclamation);
        ui::Set_Focus(cboScheduler);
        return;
    case ScheduleVerdict::NoSelection:
        return; // deliberately silent; the focus stays where it is
    case ScheduleVerdict::Conflict:
        MsgBox(S(d.rules.conflictMessage), MsgStyle::Exclamation);
        ui::Set_Focus(cboScheduler);
        return;
    case ScheduleVerdict::Limit:
        MsgBox(Schedule_Limit_Message(), MsgStyle::Exclamation);
        ui::Set_Focus(cboScheduler);
        return;
    case ScheduleVerdict::Accepted:
        break;
    }
    if (adding) {
        m_allowance.Before_Add(lvwSchedules->Count());
        const ResultTable table = Add_Schedule_Row(c);
        // The row is on the list before its key is read: after a failed insert it stays, blank.
        const int item = lvwSchedules->Add(QString(), S(d.listIcon));
        lvwSchedules->Set_Tag(item, table.Text(1, 0));
        lvwSchedules->Set_Text(item, c.type);
        lvwSchedules->Set_Sub_Item(item, 1, c.from);
        lvwSchedules->Set_Sub_Item(item, 2, c.to);
        lvwSchedules->Set_Sub_Item(item, 3, selection);
        Clear_Day_Month_Selection();
    } else if (cmAdd->text() == kSave) {
        if (const int row = First_Selected_Row()) {
            Update_Schedule_Row(c);
            lvwSchedules->Set_Text(row, c.type);
            lvwSchedules->Set_Sub_Item(row, 1, c.from);
            lvwSchedules->Set_Sub_Item(row, 2, c.to);
            lvwSchedules->Set_Sub_Item(row, 3,
                                       c.type == kWeekly    ? cboDay->Text()
                                       : c.type == kMonthly ? cboMonths->Text()
                                                            : QString());
        }
        Clear_Day_Month_Selection();
        Add_Mode_Captions();
        if (d.tagOnlyWhileEditing)
            ui::Set_Tag(cboScheduler, QString());
        cmdRemove->setEnabled(true);
    }
    ui::Set_Focus(cboScheduler);
}

void SchedulerPage::cmdEdit_Click() {
    if (cmdEdit->text() == kCancel) {
        Clear_Day_Month_Selection();
        Add_Mode_Captions();
        cmdRemove->setEnabled(true);
        if (d.tagOnlyWhileEditing)
            ui::Set_Tag(cboScheduler, QString());
        ui::Set_Focus(cboScheduler);
        return;
    }
    const int row = First_Selected_Row();
    if (row == 0) {
        ui::Set_Focus(cboScheduler);
        return;
    }
    ui::Set_Tag(cboScheduler, lvwSchedules->Tag(row));
    // Taking the row's type runs the type's Click, also when the type stays the same.
    const QString type = lvwSchedules->Text(row);
    if (cboScheduler->Text() == type)
        cboScheduler_Click();
    else
        cboScheduler->Set_Text(type);
    dtpkFromTime->Set_Value_Text(lvwSchedules->Sub_Item(row, 1));
    dtpkToTime->Set_Value_Text(lvwSchedules->Sub_Item(row, 2));
    const QString days = lvwSchedules->Sub_Item(row, 3);
    if (type == kWeekly) {
        Show_Single_Entry(cboDay, days);
        Check_Weekdays_From_Text(days, m_days);
    } else if (type == kMonthly) {
        Show_Single_Entry(cboMonths, days);
        Check_Months_From_Text(days, m_months);
    }
    cmdEdit->setText(kCancel);
    cmAdd->setText(kSave);
    cmdRemove->setEnabled(false);
    ui::Set_Focus(cboScheduler);
}

void SchedulerPage::cmdRemove_Click() {
    if (lvwSchedules->Count() == 0)
        return;
    if (d.removeClearsChecksFirst)
        Clear_Day_Month_Selection();
    if (MsgBox(QStringLiteral("Are you sure you want to delete the selected Schedule(s)?"),
               MsgStyle::Question, MsgButtons::YesNo) != MsgAnswer::Yes)
        return;
    int count = lvwSchedules->Count();
    for (int i = 1; i <= count; ++i) {
        if (!lvwSchedules->Selected(i))
            continue;
        if (Remove_Schedule(ui::Tag_Number(lvwSchedules->Tag(i)))) {
            lvwSchedules->Remove(i);
            --i;
            --count;
            m_allowance.After_Remove();
        }
    }
}

void SchedulerPage::Form_KeyPress(int& KeyAscii) {
    ui::Close_On_Esc(KeyAscii, [this] { cmdClose_Click(); });
}

void SchedulerPage::cmdClose_Click() {
    Unload();
}

} // namespace hv
