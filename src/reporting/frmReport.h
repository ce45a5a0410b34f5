#pragma once
// The report sheet: title, criteria, headings, the rows of the selection's statement and a closing empty
// row, all rows of one list, laid out like a printed page. It deletes the listed rows and exports the
// sheet as an HTML fragment. The selection is read live from the selection page beneath it.
#include "ui/Controls.h"
#include "ui/Form.h"
#include "ui/ListView.h"

class QGroupBox;

namespace hv {

class frmReporting;

class frmReport final : public ui::Form {
    Q_OBJECT
public:
    frmReport();

    QString Report_Title;

    QGroupBox* fraReport = nullptr;
    ui::ListView* lvwReport = nullptr;
    ui::CommandButton* cmdDeleteReport = nullptr;
    ui::CommandButton* cmdExport = nullptr;
    ui::CommandButton* cmdClose = nullptr;

    // Builds the sheet and shows it modally over the selection page, or says there is nothing to show.
    void Show_This_Form();
    void Open(const QString& word, QWidget* owner) override;

    bool Fill_Report();
    void Arrange_Report();
    // The sum of the widths of all columns but this one (1-based).
    int Sum_Other_Column_Widths(int column) const;
    QString Default_Export_Name() const;
    void Export_Report(ui::ListView* list);

    void cmdDeleteReport_Click();
    void cmdExport_Click();
    void cmdClose_Click();

    // Rows 1 to 8 are the same for every report: title, criteria and headings.
    static constexpr int kHeadRows = 8;

protected:
    void Form_KeyPress(int& KeyAscii) override;
    void Form_QueryUnload(int& Cancel, int UnloadMode) override;
    void resizeEvent(QResizeEvent* e) override;

private:
    // Places in twips, kept exactly as the layout computes them.
    struct Place {
        int left, top, width, height;
    };
    void Apply(QWidget* w, const Place& p);
    void Add_Report_Columns();
    void Add_Report_Title();
    void Add_Report_Criteria();
    void Add_Report_Headings();
    void Form_Resize();
    static frmReporting& Selection();

    Place m_frame{120, 120, 11760, 6900};
    Place m_list{120, 240, 11520, 6540};
    Place m_delete{120, 7120, 1500, 375};
    Place m_export{8805, 7120, 1500, 375};
    Place m_close{10380, 7120, 1500, 375};
    bool m_busy = false;
};

} // namespace hv
