#include "filters/frmPortFilter.h"

#include "core/clsLog.h"
#include "filters/model/PortRules.h"
#include "platform/Err.h"
#include "platform/Platform.h"
#include "store/Bits.h"
#include "store/modCommonFuns.h"
#include "store/modDBFunctions.h"
#include "ui/Forms.h"
#include "ui/Session.h"

#include <QVBoxLayout>

namespace hv {

namespace {
const QString kPortFilter = QStringLiteral("Port Filter");
const QString kPortBlocking = QStringLiteral("Port Blocking");
const QString kIconKey = QStringLiteral("Port Filter");
const QString kCopySettingsName = QStringLiteral("Port Blocking And Filtering");
const QString kDeleteQuestion = QStringLiteral("Are you sure you want to delete the selected Port(s)?");
// Design sizes in twips.
constexpr int kListWidth = 5175;
constexpr int kListHeight = 5175;
constexpr int kFilterComboWidth = 1800;
constexpr int kProtocolComboWidth = 1800;
} // namespace

frmPortFilter::FrameControls frmPortFilter::Build_Frame(const QString& side, const QString& frameName,
                                                        const QString& caption, const QString& listName,
                                                        const QStringList& filters) {
    FrameControls c{};
    c.frame = new QGroupBox(caption, this);
    c.frame->setObjectName(frameName);
    c.filter = new ui::ComboBox(QStringLiteral("cbo%1Filter").arg(side), ui::ComboBox::DropDownList, c.frame);
    for (const QString& f : filters)
        c.filter->Add_Item(f);
    c.filter->setFixedWidth(ui::Twips_To_Pixels(kFilterComboWidth));
    c.protocol =
        new ui::ComboBox(QStringLiteral("cbo%1Protocol").arg(side), ui::ComboBox::DropDownCombo, c.frame);
    for (const QString& p : Port_Protocols())
        c.protocol->Add_Item(p);
    c.protocol->setFixedWidth(ui::Twips_To_Pixels(kProtocolComboWidth));
    c.port = new ui::TextBox(QStringLiteral("txt%1PortNumber").arg(side), c.frame);
    c.port->Set_Max_Length(5);
    c.add = new ui::CommandButton(QStringLiteral("cmd%1Add").arg(side), QStringLiteral("Add"), c.frame);
    c.remove =
        new ui::CommandButton(QStringLiteral("cmd%1Remove").arg(side), QStringLiteral("Remove"), c.frame);
    c.copySettings = new ui::CommandButton(QStringLiteral("cmd%1CopySettings").arg(side), QString(), c.frame);
    c.list = new ui::ListView(listName, ui::ListView::Report, c.frame);
    c.list->Set_Size_Twips(kListWidth, kListHeight);
    c.list->Add_Column(QStringLiteral("Filter"), kFilterComboWidth);
    c.list->Add_Column(QStringLiteral("Protocol"), kProtocolComboWidth);
    c.list->Add_Column(QStringLiteral("Port Number"),
                       kListWidth - kFilterComboWidth - kProtocolComboWidth - 20);
    c.list->Set_Small_Icons(ilsPortFilter);
    c.list->Set_Multi_Select(true);
    c.list->Set_Hide_Selection(false);

    auto* column = new QVBoxLayout(c.frame);
    auto* entry = new QHBoxLayout;
    entry->addWidget(c.filter);
    entry->addWidget(c.protocol);
    entry->addWidget(c.port, 1);
    entry->addWidget(c.add);
    column->addLayout(entry);
    column->addWidget(c.list);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(c.remove);
    buttons->addStretch(1);
    buttons->addWidget(c.copySettings);
    column->addLayout(buttons);
    return c;
}

frmPortFilter::frmPortFilter() : RuleListPage(QStringLiteral("frmPortFilter")) {
    ilsPortFilter = Make_Image_List(QStringLiteral("ilsPortFilter"), {kIconKey});
    lblSelectFilterType =
        new ui::Label(QStringLiteral("lblSelectFilterType"), QStringLiteral("Select Filter Type:"), this);
    cboFilterType = new ui::ComboBox(QStringLiteral("cboFilterType"), ui::ComboBox::DropDownList, this);
    cboFilterType->Add_Item(kPortFilter);
    cboFilterType->Add_Item(kPortBlocking);
    chkEnablePortFilter = new ui::CheckBox(QStringLiteral("chkEnablePortFilter"),
                                           QStringLiteral("Enable Port Blocking And Filtering"), this);

    const FrameControls b = Build_Frame(QStringLiteral("B"), QStringLiteral("fraPortBlocking"), kPortBlocking,
                                        QStringLiteral("lvwPortBlocking"),
                                        {QStringLiteral("Block Completely"), QStringLiteral("Block Incoming"),
                                         QStringLiteral("Block Outgoing")});
    const FrameControls f = Build_Frame(
        QStringLiteral("F"), QStringLiteral("fraPortFilter"), kPortFilter, QStringLiteral("lvwPortFilter"),
        {QStringLiteral("HTTP Filter"), QStringLiteral("SMTP Filter"), QStringLiteral("POP3 Filter")});
    fraPortBlocking = b.frame;
    cboBFilter = b.filter;
    cboBProtocol = b.protocol;
    txtBPortNumber = b.port;
    cmdBAdd = b.add;
    cmdBRemove = b.remove;
    cmdBCopySettings = b.copySettings;
    lvwPortBlocking = b.list;
    fraPortFilter = f.frame;
    cboFFilter = f.filter;
    cboFProtocol = f.protocol;
    txtFPortNumber = f.port;
    cmdFAdd = f.add;
    cmdFRemove = f.remove;
    cmdFCopySettings = f.copySettings;
    lvwPortFilter = f.list;
    cmdClose = new ui::CommandButton(QStringLiteral("cmdClose"), QStringLiteral("Close"), this);

    auto* layout = new QVBoxLayout(this);
    auto* top = new QHBoxLayout;
    top->addWidget(lblSelectFilterType);
    top->addWidget(cboFilterType);
    top->addStretch(1);
    top->addWidget(chkEnablePortFilter);
    layout->addLayout(top);
    layout->addWidget(fraPortFilter);
    layout->addWidget(fraPortBlocking);
    auto* bottom = new QHBoxLayout;
    bottom->addStretch(1);
    bottom->addWidget(cmdClose);
    layout->addLayout(bottom);

    connect(cboFilterType, &ui::ComboBox::Click, this, &frmPortFilter::cboFilterType_Click);
    connect(cboFFilter, &ui::ComboBox::Click, this, &frmPortFilter::cboFFilter_Click);
    connect(cboBFilter, &ui::ComboBox::Click, this, &frmPortFilter::cboBFilter_Click);
    connect(cboFProtocol, &ui::ComboBox::Click, this, &frmPortFilter::cboFProtocol_Click);
    connect(cboBProtocol, &ui::ComboBox::Click, this, &frmPortFilter::cboBProtocol_Click);
    ui::Set_KeyPress(txtFPortNumber, [this](int& KeyAscii) { txtFPortNumber_KeyPress(KeyAscii); });
    ui::Set_KeyPress(txtBPortNumber, [this](int& KeyAscii) { txtBPortNumber_KeyPress(KeyAscii); });
    connect(cmdFAdd, &ui::CommandButton::Click, this, &frmPortFilter::cmdFAdd_Click);
    connect(cmdBAdd, &ui::CommandButton::Click, this, &frmPortFilter::cmdBAdd_Click);
    connect(cmdFRemove, &ui::CommandButton::Click, this, &frmPortFilter::cmdFRemove_Click);
    connect(cmdBRemove, &ui::CommandButton::Click, this, &frmPortFilter::cmdBRemove_Click);
    connect(cmdFCopySettings, &ui::CommandButton::Click, this, &frmPortFilter::cmdFCopySettings_Click);
    connect(cmdBCopySettings, &ui::CommandButton::Click, this, &frmPortFilter::cmdBCopySettings_Click);
    connect(chkEnablePortFilter, &ui::CheckBox::Click, this, &frmPortFilter::chkEnablePortFilter_Click);
    connect(cmdClose, &ui::CommandButton::Click, this, [this] { cmdClose_Click(); });
}

void frmPortFilter::Form_Load() {
    Guarded([this] {
        Init_Columns();
        Set_Tool_Tips();
        Load_Port_Filters();
        Load_Port_Blocks();
        Set_Controls_Enabled();
        // Each of these fires its click; the blocking protocol follows its filter's click.
        cboFilterType->Set_ListIndex(0);
        cboFFilter->Set_ListIndex(0);
        cboFProtocol->Set_ListIndex(0);
        cboBFilter->Set_ListIndex(0);
        Load_Pictures();
        const Subject subject = Current_Subject();
        if (Is_Feature_Bit_Set(subject.computerId, subject.userId, FEATURE_PORT_FILTER))
            Check_Silently(chkEnablePortFilter, 1);
    });
}

void frmPortFilter::Init_Columns() {
    Set_Caption(QStringLiteral("Port Filter - ") + Current_User_Text());
    Size_Columns(lvwPortFilter);
    Size_Columns(lvwPortBlocking);
}

void frmPortFilter::Size_Columns(ui::ListView* list) {
    const bool filters = list == lvwPortFilter;
    const int first = (filters ? cboFFilter : cboBFilter)->width() * ui::kTwipsPerPixel;
    const int second = (filters ? cboFProtocol : cboBProtocol)->width() * ui::kTwipsPerPixel;
    list->Set_Column_Width(1, first);
    list->Set_Column_Width(2, second);
    list->Set_Column_Width(3, list->Width_Twips() - (first + second) - 20);
}

void frmPortFilter::Reload_Ports(long kind, ui::ListView* list) {
    list->Clear();
    Size_Columns(list);
    Load_Ports(kind, list);
}

void frmPortFilter::Set_Tool_Tips() {
    chkEnablePortFilter->setToolTip(QStringLiteral("Enable/Disable the Port Filter"));
    cboBFilter->setToolTip(QStringLiteral("Select a block type"));
    cboFFilter->setToolTip(QStringLiteral("Select a filter type"));
    cboBProtocol->setToolTip(QStringLiteral("Select a protocol to block"));
    cboFProtocol->setToolTip(QStringLiteral("Select a protocol to filter"));
    txtBPortNumber->setToolTip(QStringLiteral("Provides a space for you to type Port Number"));
    txtFPortNumber->setToolTip(QStringLiteral("Provides a space for you to type Port Number"));
}

void frmPortFilter::Set_Controls_Enabled() {
    Enable_Unless_Remote({cmdFAdd, cmdFRemove, cmdBAdd, cmdBRemove, chkEnablePortFilter, cboFFilter,
                          cboFProtocol, cboBFilter, cboBProtocol, txtBPortNumber, txtFPortNumber});
}

void frmPortFilter::Load_Pictures() {
    cmdBCopySettings->Set_Picture(ilsPortFilter->Icon(QStringLiteral("Copy Settings")));
    cmdFCopySettings->Set_Picture(ilsPortFilter->Icon(QStringLiteral("Copy Settings")));
}

void frmPortFilter::Load_Ports(long kind, ui::ListView* list) {
    try {
        const Subject subject = Current_Subject();
        ResultTable table;
        long rows = 0;
        if (!Get_Ports(kind, subject.computerId, subject.userId, table, rows))
            return;
        for (long i = 1; i <= rows; ++i) {
            QString filter;
            bool found = false;
            Filter_Code_To_Text(long(table.Long(int(i), 1)), filter, found);
            const int row = list->Add(filter, kIconKey);
            list->Set_Sub_Item(row, 1, table.Text(int(i), 2));
            list->Set_Sub_Item(row, 2, table.Text(int(i), 0));
        }
        Allowance(list).After_Load();
    } catch (...) {
        Report_Failure();
    }
}

void frmPortFilter::cboFilterType_Click() {
    if (cboFilterType->Text() == kPortFilter) {
        fraPortFilter->setVisible(true);
        fraPortBlocking->setVisible(false);
    } else if (cboFilterType->Text() == kPortBlocking) {
        fraPortBlocking->setVisible(true);
        fraPortFilter->setVisible(false);
    }
}

void frmPortFilter::Filter_Click(ui::ComboBox* filter, ui::ComboBox* protocol) {
    Guarded([&] {
        long index = 0;
        bool found = false;
        Filter_To_Protocol_Index(filter->Text(), index, found);
        // Setting the index runs the protocol's click even when the entry stays the same, and a protocol
        // typed by hand gives way to the entry: every block kind brings back "HTTP" and port 80.
        protocol->User_Choose(int(index));
    });
}

void frmPortFilter::Protocol_Click(ui::ComboBox* protocol, ui::TextBox* port) {
    long number = 0;
    bool found = false;
    Protocol_To_Port(protocol->Text(), number, found);
    port->Set_Text(QString::number(number));
}

void frmPortFilter::Port_KeyPress(int& KeyAscii, const std::function<void()>& add) {
    if (KeyAscii == 13) {
        KeyAscii = 0;
        add();
        return;
    }
    // Digits and Backspace, and six codes that are the desktop's key codes of End, Home, the arrows,
    // Insert and Delete; as characters they pass too.
    const bool passes = (KeyAscii >= '0' && KeyAscii <= '9') || KeyAscii == 8 || KeyAscii == 35 ||
                        KeyAscii == 36 || KeyAscii == 37 || KeyAscii == 39 || KeyAscii == 45 ||
                        KeyAscii == 46;
    if (!passes)
        KeyAscii = 0;
}

void frmPortFilter::cmdFAdd_Click() {
    Add_Port_Rule({cboFFilter, cboFProtocol, txtFPortNumber, lvwPortFilter, kFilterPortWords.invalid,
                   kFilterPortWords.exists});
}

void frmPortFilter::cmdBAdd_Click() {
    Add_Port_Rule({cboBFilter, cboBProtocol, txtBPortNumber, lvwPortBlocking, kBlockingPortWords.invalid,
                   kBlockingPortWords.exists});
}

void frmPortFilter::Add_Port_Rule(const Frame& f) {
    try {
        long code = 0;
        bool found = false;
        Filter_Text_To_Code(f.filter->Text(), code, found);
        // An empty or non-numeric box is a run-time failure, reported as such.
        const long port = Text_To_Long(f.port->Text());
        if (!Is_Valid_Port(port)) {
            MsgBox(QLatin1String(f.invalidMessage), MsgStyle::Exclamation);
        } else if (Is_Port_In_ListView(port, *lvwPortBlocking) || Is_Port_In_ListView(port, *lvwPortFilter)) {
            // One rule a port, whichever list holds it.
            MsgBox(QLatin1String(f.existsMessage), MsgStyle::Exclamation);
        } else {
            const QString protocol = f.protocol->Text();
            const Subject subject = Current_Subject();
            if (Add_Port(port, code, protocol, subject.computerId, subject.userId)) {
                if (f.list->Count() == 20)
                    ColumnAllowance::Give_Room(f.list, 2);
                const int row = f.list->Add(f.filter->Text(), kIconKey);
                f.list->Set_Sub_Item(row, 1, protocol);
                f.list->Set_Sub_Item(row, 2, QString::number(port));
            }
        }
    } catch (...) {
        Report_Failure();
    }
    // The port box keeps its text on every path.
    ui::Set_Focus(f.filter);
}

void frmPortFilter::cmdFRemove_Click() {
    Remove_Selected_Rows(lvwPortFilter, kDeleteQuestion, "PORT_TBL", "PORT_NO", 2, Allowance(lvwPortFilter),
                         [this] { Reload_Ports(0, lvwPortFilter); });
}

void frmPortFilter::cmdBRemove_Click() {
    Remove_Selected_Rows(lvwPortBlocking, kDeleteQuestion, "PORT_TBL", "PORT_NO", 2,
                         Allowance(lvwPortBlocking), [this] { Reload_Ports(1, lvwPortBlocking); });
}

void frmPortFilter::chkEnablePortFilter_Click() {
    Enable_Click(chkEnablePortFilter, QStringLiteral("Port Blocking and Filtering"), FEATURE_PORT_FILTER);
}

void frmPortFilter::Copy_Settings() {
    Show_Page(QStringLiteral("frmCopySettings"), kCopySettingsName);
}

} // namespace hv
