#pragma once
// The report selection: which kind of usage report, which filter, the date range and the sort, and for
// the selected user the switch that tells the enforcement side to record that kind at all. The page
// composes the report's statement and hands over to the report sheet, which reads the selection from
// this page's controls and tags while it is open.
#include "store/Sql.h"
#include "ui/Controls.h"
#include "ui/Form.h"

class QGroupBox;

namespace hv {

class frmReporting final : public ui::Form {
    Q_OBJECT
public:
    frmReporting();

    // The statement of the last Create Report; the sheet runs it.
    Sql Report_Query;

    ui::ComboBox* cboReportingType = nullptr;
    ui::ComboBox* cboFilterType = nullptr;
    ui::ComboBox* cboSortBy = nullptr;
    ui::ComboBox* cboSortingMode = nullptr;
    ui::DatePicker* dtpkStartTime = nullptr;
    ui::DatePicker* dtpkStopTime = nullptr;
    ui::CheckBox* chkEnableReporting = nullptr;
    ui::CommandButton* cmdCreateReport = nullptr;
    ui::CommandButton* cmdClose = nullptr;

    // The published selection: the list positions the tags hold.
    int Report_Type() const;
    int Filter_Type() const;
    int Sort_By() const;
    int Sorting_Mode() const;

    void cboReportingType_Click();
    void cboFilterType_Click();
    void cboSortBy_Click();
    void cboSortingMode_Click();
    void chkEnableReporting_Click();
    void cmdCreateReport_Click();
    void cmdClose_Click();

protected:
    void Form_Load() override;
    void Form_KeyPress(int& KeyAscii) override;
    void Form_QueryUnload(int& Cancel, int UnloadMode) override;

private:
    void Set_Controls_Enabled();
    void Set_Form_Caption();
    QGroupBox* Frame(const char* name, const QString& caption);

    bool m_creating = false;
};

} // namespace hv
