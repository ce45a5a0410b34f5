#include "reporting/frmReport.h"

#include "core/DateText.h"
#include "core/clsLog.h"
#include "platform/Err.h"
#include "platform/Platform.h"
#include "reporting/frmReporting.h"
#include "reporting/model/ReportKinds.h"
#include "reporting/model/clsHTML.h"
#include "store/modDB.h"
#include "ui/BusyCursor.h"
#include "ui/CommonDialog.h"
#include "ui/Forms.h"
#include "ui/Session.h"

#include <QGroupBox>
#include <QLocale>

namespace hv {

namespace {

// The sheet as the export reads it: the list's rows as they stand, letting the window repaint meanwhile.
class ListSheet final : public ReportSheet {
public:
    ListSheet(const ui::ListView& list, ui::BusyCursor& busy) : m_list(list), m_busy(busy) {}
    int Rows() const override { return m_list.Count(); }
    int Columns() const override { return m_list.Column_Count(); }
    SheetRow Row(int row) const override {
        m_busy.Let_Paint();
        return {&m_list.Text_In_Place(row), m_list.Sub_Items_In_Place(row), m_list.Bold(row)};
    }

private:
    const ui::ListView& m_list;
    ui::BusyCursor& m_busy;
};

int Twips(int pixels) {
    return pixels * ui::kTwipsPerPixel;
}

} // namespace

frmReport::frmReport() : ui::Form(QStringLiteral("frmReport")) {
    KeyPreview = true;
    Set_Caption(QStringLiteral("Report"));
    fraReport = new QGroupBox(QStringLiteral("Report"), this);
    fraReport->setObjectName(QStringLiteral("fraReport"));
    lvwReport = new ui::ListView(QStringLiteral("lvwReport"), ui::ListView::Report, fraReport);
    cmdDeleteReport =
        new ui::CommandButton(QStringLiteral("cmdDeleteReport"), QStringLiteral("Delete Report"), this);
    cmdExport = new ui::CommandButton(QStringLiteral("cmdExport"), QStringLiteral("Export"), this);
    cmdClose = new ui::CommandButton(QStringLiteral("cmdClose"), QStringLiteral("Close"), this);
    Apply(fraReport, m_frame);
    Apply(lvwReport, m_list);
    Apply(cmdDeleteReport, m_delete);
    Apply(cmdExport, m_export);
    Apply(cmdClose, m_close);
    resize(ui::Twips_To_Pixels(12000), ui::Twips_To_Pixels(7950));

    connect(cmdDeleteReport, &ui::CommandButton::Click, this, &frmReport::cmdDeleteReport_Click);
    connect(cmdExport, &ui::CommandButton::Click, this, &frmReport::cmdExport_Click);
    connect(cmdClose, &ui::CommandButton::Click, this, &frmReport::cmdClose_Click);
}

frmReporting& frmReport::Selection() {
    return ui::Forms::Get<frmReporting>();
}

void frmReport::Apply(QWidget* w, const Place& p) {
    if (auto* list = qobject_cast<ui::ListView*>(w)) {
        list->Set_Size_Twips(p.width, p.height);
        list->move(ui::Twips_To_Pixels(p.left), ui::Twips_To_Pixels(p.top));
        return;
    }
    w->setGeometry(ui::Twips_To_Pixels(p.left), ui::Twips_To_Pixels(p.top), ui::Twips_To_Pixels(p.width),
                   ui::Twips_To_Pixels(p.height));
}

void frmReport::Open(const QString& word, QWidget* owner) {
    (void)word;
    (void)owner;
    Show_This_Form();
}

void frmReport::Show_This_Form() {
    bool filled = false;
    {
        // The window repaints while a long report loads; the selection cannot change meanwhile.
        QWidget* selection = ui::Forms::Find(QStringLiteral("frmReporting"));
        const bool wasEnabled = selection && selection->isEnabled();
        if (wasEnabled)
            selection->setEnabled(false);
        Guarded([&] { filled = Fill_Report(); });
        if (wasEnabled)
            selection->setEnabled(true);
    }
    if (filled) {
        Show_Modal(&Selection());
        return;
    }
    Unload();
    MsgBox(QStringLiteral("There is no data to report!"), MsgStyle::Exclamation);
}

bool frmReport::Fill_Report() {
    // Without the selection page there is no statement to run.
    const auto* open = dynamic_cast<frmReporting*>(ui::Forms::Find(QStringLiteral("frmReporting")));
    if (!open || !open->Loaded())
        return false;
    frmReporting& selection = Selection();
    ui::BusyCursor busy;
    StorePaintsWhileBusy painting; // the statement sorts a long report before its first row
    long rows = 0;
    int columns = 0;
    bool started = false;
    // The rows go straight from the statement into the list: a report of a million rows is never held
    // twice.
    const bool ok = Run_Query_Rows(
        selection.Report_Query,
        [&](const QString* cells, int count) {
            if (!started) {
                started = true;
                Add_Report_Columns();
                Arrange_Report();
                Add_Report_Title();
                Add_Report_Criteria();
                Add_Report_Headings();
                columns = lvwReport->Column_Count();
            }
            QStringList subItems;
            const int subs = std::min(count, columns) - 1;
            if (subs > 0) {
                subItems.reserve(subs);
                for (int c = 1; c <= subs; ++c)
                    subItems.append(cells[c]);
            }
            lvwReport->Add_Row(count > 0 ? cells[0] : QString(), std::move(subItems));
            busy.Let_Paint();
        },
        rows);
    if (!ok || rows < 1) {
        lvwReport->Clear();
        return false;
    }
    lvwReport->Add(QString());
    if (selection.cboFilterType->Text() == QLatin1String("DOMAIN"))
        cmdDeleteReport->setEnabled(false);
    return true;
}

void frmReport::Add_Report_Columns() {
    const frmReporting& selection = Selection();
    const report::Filter& filter = report::Filter_At(selection.Report_Type(), selection.Filter_Type());
    const int width = lvwReport->Width_Twips();
    for (const report::Column& c : filter.columns)
        lvwReport->Add_Column(QString(), qRound(width * c.share / filter.denominator));
}

void frmReport::Add_Report_Title() {
    Report_Title = QLatin1String(report::Kind_At(Selection().Report_Type()).title);
    const int row = lvwReport->Add(Report_Title, QString(), QStringLiteral("h0"));
    lvwReport->Set_Bold(row, true);
}

void frmReport::Add_Report_Criteria() {
    const frmReporting& s = Selection();
    const int type = s.Report_Type();
    const int filter = s.Filter_Type();
    lvwReport->Add(QString(), QString(), QStringLiteral("t0"));
    const QStringList lines = report::Criteria_Lines(type, filter, s.dtpkStartTime->date(),
                                                     s.dtpkStopTime->date(), s.Sort_By(), s.Sorting_Mode());
    int key = 1;
    for (const QString& line : lines) {
        const int row = lvwReport->Add(line, QString(), QStringLiteral("s%1").arg(key++));
        lvwReport->Set_Bold(row, true);
    }
    lvwReport->Add(QString(), QString(), QStringLiteral("t2"));
}

void frmReport::Add_Report_Headings() {
    const frmReporting& s = Selection();
    const report::Filter& filter = report::Filter_At(s.Report_Type(), s.Filter_Type());
    const int row = lvwReport->Add(QLatin1String(filter.columns.front().heading), QString(),
                                   QLatin1String(filter.columns.front().key));
    lvwReport->Set_Bold(row, true);
    for (size_t c = 1; c < filter.columns.size(); ++c) {
        lvwReport->Set_Sub_Item(row, int(c), QLatin1String(filter.columns[c].heading));
        lvwReport->Set_Sub_Item_Bold(row, int(c), true);
    }
}

int frmReport::Sum_Other_Column_Widths(int column) const {
    int sum = 0;
    for (int c = 1; c <= lvwReport->Column_Count(); ++c)
        if (c != column)
            sum += lvwReport->Column_Width(c);
    return sum;
}

void frmReport::resizeEvent(QResizeEvent* e) {
    ui::Form::resizeEvent(e);
    Guarded([this] { Form_Resize(); });
}

void frmReport::Form_Resize() {
    Arrange_Report();
}

void frmReport::Arrange_Report() {
    const int formHeight = Twips(height());
    const int formWidth = Twips(width());
    if (formHeight >= 2000) {
        m_frame.height = formHeight - 10 * m_frame.top;
        m_list.height = m_frame.height - (m_list.top + m_frame.top);
        m_close.top = m_frame.top + m_frame.height + 100;
        m_export.top = m_close.top;
        m_delete.top = m_close.top;
    }
    if (formWidth >= 8460) {
        m_frame.width = formWidth - 3 * m_frame.left;
        m_list.width = m_frame.width - (m_list.left + m_frame.left);
    }
    Apply(fraReport, m_frame);
    Apply(lvwReport, m_list);
    if (formWidth >= 8460) {
        if (lvwReport->Column_Count() > 0) {
            const frmReporting& s = Selection();
            const double share = report::Filter_At(s.Report_Type(), s.Filter_Type()).denominator;
            const int w = m_list.width;
            const int room = w - Sum_Other_Column_Widths(1);
            // When the other columns leave the first one short, it takes its share again.
            lvwReport->Set_Column_Width(1, w * 1.8 / share > room ? qRound(w * 4 / share) - 20 : room - 20);
        }
        m_close.left = m_list.left + m_frame.width - m_close.width;
        m_export.left = m_close.left - m_export.width - 100;
    }
    Apply(cmdDeleteReport, m_delete);
    Apply(cmdExport, m_export);
    Apply(cmdClose, m_close);
}

void frmReport::cmdDeleteReport_Click() {
    if (m_busy)
        return;
    const int count = lvwReport->Count();
    // A report of one or two rows cannot be deleted from here.
    if (count <= 11)
        return;
    if (MsgBox(QStringLiteral("Are you sure you want to delete the listed Report(s)?"), MsgStyle::Question,
               MsgButtons::YesNo) != MsgAnswer::Yes)
        return;
    m_busy = true;
    bool deleted = false;
    Guarded([&] {
        ui::BusyCursor busy;
        StorePaintsWhileBusy painting;
        // The sheet keeps its title, criteria and headings; the rows go before the store is touched.
        lvwReport->Remove_Range(kHeadRows + 1, count - kHeadRows);
        platform().Do_Events();
        const frmReporting& s = Selection();
        deleted = Run_In_Transaction(report::Report_Delete(s.Report_Type(), s.Filter_Type(),
                                                           Current_Subject().userId, s.dtpkStartTime->date(),
                                                           s.dtpkStopTime->date()));
    });
    m_busy = false;
    if (deleted)
        MsgBox(QStringLiteral("Successfuly deleted the listed Report(s)"), MsgStyle::Information);
}

QString frmReport::Default_Export_Name() const {
    return QLocale::c().toString(platform().Now().date(), QStringLiteral("dd-MMM-yyyy")) +
           QLatin1String(report::Kind_At(Selection().Report_Type()).exportWord);
}

void frmReport::Export_Report(ui::ListView* list) {
    QString fileName = Default_Export_Name();
    if (list->Count() <= kHeadRows) {
        MsgBox(QStringLiteral("There is no item to export!"), MsgStyle::Exclamation);
        return;
    }
    FileDialogRequest request;
    request.save = true;
    request.title =
        QStringLiteral("Export ") + Report_Title.toLower() + QStringLiteral(" details as text file");
    request.filter = QStringLiteral("Text Files|*.txt|All Files|*.*");
    request.fileName = fileName;
    const FileDialogAnswer answer = platform().FileDialog(request);
    clsHTML html;
    // A Cancel is not told apart: the export goes on with the name the dialog was given, in the current
    // folder.
    if (!answer.cancelled && !answer.files.isEmpty())
        fileName = First_Chosen_Path(answer);
    fileName += QStringLiteral(".html");
    ui::BusyCursor busy;
    html.SaveListViewToFile(ListSheet(*list, busy), fileName, QString(), QStringLiteral("HTML"),
                            QStringLiteral("RPT"));
}

void frmReport::cmdExport_Click() {
    if (m_busy)
        return;
    m_busy = true;
    Guarded([this] { Export_Report(lvwReport); });
    m_busy = false;
}

void frmReport::cmdClose_Click() {
    Unload();
}

void frmReport::Form_QueryUnload(int& Cancel, int UnloadMode) {
    (void)UnloadMode;
    // The window repaints while a delete or an export runs; it cannot go from under them.
    if (m_busy)
        Cancel = 1;
}

void frmReport::Form_KeyPress(int& KeyAscii) {
    ui::Close_On_Esc(KeyAscii, [this] { cmdClose_Click(); });
}

} // namespace hv
