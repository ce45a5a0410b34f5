#include "reporting/frmReporting.h"

#include "core/clsLog.h"
#include "core/modGlobal.h"
#include "platform/Platform.h"
#include "reporting/frmReport.h"
#include "reporting/model/ReportKinds.h"
#include "store/modDBFunctions.h"
#include "ui/Forms.h"
#include "ui/PageSwitches.h"
#include "ui/Session.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QVBoxLayout>

namespace hv {

namespace {

ui::Label* Add_Row(QGridLayout* grid, int row, const char* name, const QString& caption, QWidget* field,
                   QWidget* parent) {
    auto* label = new ui::Label(QLatin1String(name), caption, parent);
    grid->addWidget(label, row, 0);
    grid->addWidget(field, row, 1);
    return label;
}

// The index a combo box keeps in its Tag; one not chosen yet reads 0.
int Chosen_Index(const QObject* control) {
    return ui::Tag(control).toInt();
}

} // namespace

frmReporting::frmReporting() : ui::Form(QStringLiteral("frmReporting")) {
    KeyPreview = true;
    auto* column = new QVBoxLayout(this);

    QGroupBox* type = Frame("FrameReportingType", QStringLiteral("Reporting Type"));
    cboReportingType = new ui::ComboBox(QStringLiteral("cboReportingType"), ui::ComboBox::DropDownList, type);
    auto* typeGrid = new QGridLayout(type);
    Add_Row(typeGrid, 0, "lblReportingType", QStringLiteral("Reporting Type:"), cboReportingType, type);
    column->addWidget(type);

    QGroupBox* filter = Frame("FrameFilterType", QStringLiteral("Filter Type"));
    cboFilterType = new ui::ComboBox(QStringLiteral("cboFilterType"), ui::ComboBox::DropDownList, filter);
    auto* filterGrid = new QGridLayout(filter);
    Add_Row(filterGrid, 0, "lblFilterType", QStringLiteral("Filter Type:"), cboFilterType, filter);
    column->addWidget(filter);

    QGroupBox* range = Frame("FrameDateRange", QStringLiteral("Date Range"));
    dtpkStartTime = new ui::DatePicker(QStringLiteral("dtpkStartTime"), ui::DatePicker::Date, range);
    dtpkStopTime = new ui::DatePicker(QStringLiteral("dtpkStopTime"), ui::DatePicker::Date, range);
    auto* rangeGrid = new QGridLayout(range);
    Add_Row(rangeGrid, 0, "lblStartTime", QStringLiteral("Start Date:"), dtpkStartTime, range);
    Add_Row(rangeGrid, 1, "lblStopTime", QStringLiteral("Stop Date:"), dtpkStopTime, range);
    column->addWidget(range);

    QGroupBox* sorting = Frame("FrameSorting", QStringLiteral("Sorting"));
    cboSortBy = new ui::ComboBox(QStringLiteral("cboSortBy"), ui::ComboBox::DropDownList, sorting);
    cboSortingMode = new ui::ComboBox(QStringLiteral("cboSortingMode"), ui::ComboBox::DropDownList, sorting);
    cboSortingMode->Add_Item(QStringLiteral("Ascending"));
    cboSortingMode->Add_Item(QStringLiteral("Descending"));
    auto* sortGrid = new QGridLayout(sorting);
    Add_Row(sortGrid, 0, "lblSortBy", QStringLiteral("Sort By:"), cboSortBy, sorting);
    Add_Row(sortGrid, 1, "lblSortingMode", QStringLiteral("Sorting Mode:"), cboSortingMode, sorting);
    column->addWidget(sorting);

    QGroupBox* reporting = Frame("FrameReporting", QStringLiteral("Reporting"));
    chkEnableReporting = new ui::CheckBox(QStringLiteral("chkEnableReporting"), QString(), reporting);
    auto* reportingRow = new QHBoxLayout(reporting);
    reportingRow->addWidget(chkEnableReporting);
    column->addWidget(reporting);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    cmdCreateReport =
        new ui::CommandButton(QStringLiteral("cmdCreateReport"), QStringLiteral("Create Report"), this);
    cmdClose = new ui::CommandButton(QStringLiteral("cmdClose"), QStringLiteral("Close"), this);
    buttons->addWidget(cmdCreateReport);
    buttons->addWidget(cmdClose);
    column->addLayout(buttons);

    for (int i = 0; i < report::Kind_Count(); ++i)
        cboReportingType->Add_Item(QLatin1String(report::Kind_At(i).entry));

    connect(cboReportingType, &ui::ComboBox::Click, this,
            [this] { Guarded([this] { cboReportingType_Click(); }); });
    connect(cboFilterType, &ui::ComboBox::Click, this,
            [this] { Guarded([this] { cboFilterType_Click(); }); });
    connect(cboSortBy, &ui::ComboBox::Click, this, &frmReporting::cboSortBy_Click);
    connect(cboSortingMode, &ui::ComboBox::Click, this, &frmReporting::cboSortingMode_Click);
    connect(chkEnableReporting, &ui::CheckBox::Click, this, &frmReporting::chkEnableReporting_Click);
    connect(cmdCreateReport, &ui::CommandButton::Click, this, &frmReporting::cmdCreateReport_Click);
    connect(cmdClose, &ui::CommandButton::Click, this, &frmReporting::cmdClose_Click);
}

QGroupBox* frmReporting::Frame(const char* name, const QString& caption) {
    auto* frame = new QGroupBox(caption, this);
    frame->setObjectName(QLatin1String(name));
    return frame;
}

int frmReporting::Report_Type() const {
    return Chosen_Index(cboReportingType);
}
int frmReporting::Filter_Type() const {
    return Chosen_Index(cboFilterType);
}
int frmReporting::Sort_By() const {
    return Chosen_Index(cboSortBy);
}
int frmReporting::Sorting_Mode() const {
    return Chosen_Index(cboSortingMode);
}

void frmReporting::Form_Load() {
    Guarded([this] {
        Set_Controls_Enabled();
        Set_Form_Caption();
        cboReportingType->Set_ListIndex(0);
        cboSortingMode->Set_ListIndex(0);
        const QDate today = platform().Now().date();
        dtpkStartTime->setDate(today);
        dtpkStopTime->setDate(today);
        const Subject subject = Current_Subject();
        const report::Kind& kind = report::Kind_At(cboReportingType->ListIndex());
        if (Is_Feature_Bit_Set(subject.computerId, subject.userId, kind.bit)) {
            chkEnableReporting->setText(QLatin1String(kind.checkCaption));
            ui::Check_Silently(chkEnableReporting, 1);
        }
    });
}

void frmReporting::Set_Controls_Enabled() {
    // Reports can be made in remote mode too; only the switch is locked there.
    if (Remote_Mode)
        chkEnableReporting->setEnabled(false);
    else
        cmdCreateReport->setEnabled(true);
}

void frmReporting::Set_Form_Caption() {
    Set_Caption(QStringLiteral("Reporting - ") + Current_User_Text());
}

void frmReporting::Form_KeyPress(int& KeyAscii) {
    ui::Close_On_Esc(KeyAscii, [this] { cmdClose_Click(); });
}

void frmReporting::Form_QueryUnload(int& Cancel, int UnloadMode) {
    (void)UnloadMode;
    // The window repaints while a long report loads; the page cannot go from under it.
    if (m_creating)
        Cancel = 1;
}

void frmReporting::cboReportingType_Click() {
    const int type = cboReportingType->ListIndex();
    const report::Kind& kind = report::Kind_At(type);
    cboFilterType->Clear_Items();
    cboSortBy->Clear_Items();
    for (const report::Filter& f : kind.filters)
        cboFilterType->Add_Item(QLatin1String(f.entry));
    for (const QString& caption : kind.sortBy)
        cboSortBy->Add_Item(caption);
    const Subject subject = Current_Subject();
    ui::Check_Silently(chkEnableReporting,
                       Is_Feature_Bit_Set(subject.computerId, subject.userId, kind.bit) ? 1 : 0);
    chkEnableReporting->setText(QLatin1String(kind.checkCaption));
    cboFilterType->Set_ListIndex(0);
    ui::Set_Tag(cboReportingType, QString::number(type));
}

void frmReporting::cboFilterType_Click() {
    const int type = cboReportingType->ListIndex();
    const int filter = cboFilterType->ListIndex();
    const report::Kind& kind = report::Kind_At(type);
    // The Application and Device kinds keep the sort list they filled for all their filters.
    if (kind.sortBy.isEmpty()) {
        cboSortBy->Clear_Items();
        for (const QString& caption : report::Filter_At(type, filter).sortBy)
            cboSortBy->Add_Item(caption);
    }
    cboSortBy->Set_ListIndex(0);
    ui::Set_Tag(cboFilterType, QString::number(filter));
}

void frmReporting::cboSortBy_Click() {
    ui::Set_Tag(cboSortBy, QString::number(cboSortBy->ListIndex()));
}

void frmReporting::cboSortingMode_Click() {
    ui::Set_Tag(cboSortingMode, QString::number(cboSortingMode->ListIndex()));
}

void frmReporting::chkEnableReporting_Click() {
    // The question names the box by its whole caption, "Enable" and all; the bit is the chosen kind's.
    Guarded([this] {
        ui::Enable_Feature_Click(chkEnableReporting, chkEnableReporting->text(),
                                 report::Kind_At(cboReportingType->ListIndex()).bit);
    });
}

void frmReporting::cmdCreateReport_Click() {
    // A report of millions of rows lets the window repaint while it loads; a second click meanwhile is
    // not a second report.
    if (m_creating)
        return;
    m_creating = true;
    Guarded([this] {
        const QString column = report::Sort_Column(cboSortBy->Text());
        const bool descending = cboSortingMode->Text() == QLatin1String("Descending");
        Report_Query = report::Report_Query(cboReportingType->ListIndex(), cboFilterType->ListIndex(),
                                            Current_Subject().userId, dtpkStartTime->date(),
                                            dtpkStopTime->date(), column, descending);
        // Each report starts from an empty sheet; one still open from before goes first.
        if (ui::Form* previous = ui::Forms::Find(QStringLiteral("frmReport")))
            previous->Unload();
        ui::Forms::Get<frmReport>().Show_This_Form();
    });
    m_creating = false;
}

void frmReporting::cmdClose_Click() {
    Unload();
}

} // namespace hv
