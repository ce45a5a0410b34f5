#pragma once
// Per-port rules of the subject: ports passed through one of the protocol filters, and ports blocked.
// Both kinds are rows of PORT_TBL, told apart by their code; a port has one rule whichever list holds it.
#include "filters/frmRuleListPage.h"

namespace hv {

class frmPortFilter final : public RuleListPage {
    Q_OBJECT
public:
    frmPortFilter();

protected:
    void Form_Load() override;

private:
    ui::Label* lblSelectFilterType;
    ui::ComboBox* cboFilterType;
    ui::CheckBox* chkEnablePortFilter;
    QGroupBox* fraPortBlocking;
    QGroupBox* fraPortFilter;
    ui::ComboBox* cboBFilter;
    ui::ComboBox* cboFFilter;
    ui::ComboBox* cboBProtocol;
    ui::ComboBox* cboFProtocol;
    ui::TextBox* txtBPortNumber;
    ui::TextBox* txtFPortNumber;
    ui::CommandButton* cmdBAdd;
    ui::CommandButton* cmdFAdd;
    ui::CommandButton* cmdBRemove;
    ui::CommandButton* cmdFRemove;
    ui::CommandButton* cmdBCopySettings;
    ui::CommandButton* cmdFCopySettings;
    ui::ListView* lvwPortBlocking;
    ui::ListView* lvwPortFilter;
    ui::ImageList* ilsPortFilter;

    void cboFilterType_Click();
    void cboFFilter_Click() { Filter_Click(cboFFilter, cboFProtocol); }
    void cboBFilter_Click() { Filter_Click(cboBFilter, cboBProtocol); }
    void cboFProtocol_Click() { Protocol_Click(cboFProtocol, txtFPortNumber); }
    void cboBProtocol_Click() { Protocol_Click(cboBProtocol, txtBPortNumber); }
    void txtFPortNumber_KeyPress(int& KeyAscii) {
        Port_KeyPress(KeyAscii, [this] { cmdFAdd_Click(); });
    }
    void txtBPortNumber_KeyPress(int& KeyAscii) {
        Port_KeyPress(KeyAscii, [this] { cmdBAdd_Click(); });
    }
    void cmdFAdd_Click();
    void cmdBAdd_Click();
    void cmdFRemove_Click();
    void cmdBRemove_Click();
    void cmdFCopySettings_Click() { Copy_Settings(); }
    void cmdBCopySettings_Click() { Copy_Settings(); }
    void chkEnablePortFilter_Click();

    void Load_Port_Filters() { Load_Ports(0, lvwPortFilter); }
    void Load_Port_Blocks() { Load_Ports(1, lvwPortBlocking); }

    void Init_Columns();
    void Size_Columns(ui::ListView* list);
    // After a batch that did not reach the store: the list as the store has it, its columns as at load.
    void Reload_Ports(long kind, ui::ListView* list);
    void Set_Tool_Tips();
    void Set_Controls_Enabled();
    void Load_Pictures();

    struct Frame {
        ui::ComboBox* filter;
        ui::ComboBox* protocol;
        ui::TextBox* port;
        ui::ListView* list;
        const char* invalidMessage;
        const char* existsMessage;
    };
    void Filter_Click(ui::ComboBox* filter, ui::ComboBox* protocol);
    void Protocol_Click(ui::ComboBox* protocol, ui::TextBox* port);
    static void Port_KeyPress(int& KeyAscii, const std::function<void()>& add);
    void Add_Port_Rule(const Frame& frame);
    void Load_Ports(long kind, ui::ListView* list);
    void Copy_Settings();
    static ColumnAllowance Allowance(ui::ListView* list) {
        return ColumnAllowance{.list = list, .column = 2, .limit = 20, .cumulative = false};
    }
    struct FrameControls {
        QGroupBox* frame;
        ui::ComboBox* filter;
        ui::ComboBox* protocol;
        ui::TextBox* port;
        ui::CommandButton* add;
        ui::CommandButton* remove;
        ui::CommandButton* copySettings;
        ui::ListView* list;
    };
    FrameControls Build_Frame(const QString& side, const QString& frameName, const QString& caption,
                              const QString& listName, const QStringList& filters);
};

} // namespace hv
