#pragma once
// The black and white URL lists of the subject, and the Website Filter switch. A URL may stand in only
// one of the two lists when it is typed or edited; the page opens on the list that the subject's internet
// state makes the working one.
#include "filters/frmRuleListPage.h"

namespace hv {

class frmWebsiteFilter final : public RuleListPage {
    Q_OBJECT
public:
    frmWebsiteFilter();

    ui::CheckBox* chkEnableUrlFilter;
    ui::Label* lblUrlType;
    ui::ComboBox* cboUrlType;
    QGroupBox* fraBlackList;
    QGroupBox* fraWhiteList;
    ui::Label* lblBlackURL;
    ui::Label* lblWhitelistUrl;
    ui::TextBox* txtBlackUrl;
    ui::TextBox* txtWhiteUrl;
    ui::CommandButton* cmdBlackAdd;
    ui::CommandButton* cmdWhiteAdd;
    ui::CommandButton* cmdBlackEdit;
    ui::CommandButton* cmdWhiteEdit;
    ui::CommandButton* cmdBlackRemove;
    ui::CommandButton* cmdWhiteRemove;
    ui::CommandButton* cmdURLBLImport;
    ui::CommandButton* cmdURLWLImport;
    ui::CommandButton* cmdURLBLExport;
    ui::CommandButton* cmdURLWLExport;
    ui::CommandButton* cmdBLCopySettings;
    ui::CommandButton* cmdWLCopySettings;
    ui::ListView* lvwBlackList;
    ui::ListView* lvwWhiteList;
    ui::ImageList* ilsWebSiteFilter;
    CommonDialog cmnBLDilog;
    CommonDialog cmnWLDilog;

    void chkEnableUrlFilter_Click();
    void cboUrlType_Click();
    void cmdBlackAdd_Click() { m_black.Add(); }
    void cmdWhiteAdd_Click() { m_white.Add(); }
    void cmdBlackEdit_Click() { m_black.Edit(); }
    void cmdWhiteEdit_Click() { m_white.Edit(); }
    void cmdBlackRemove_Click() { m_black.Remove(); }
    void cmdWhiteRemove_Click() { m_white.Remove(); }
    void cmdURLBLImport_Click() { m_black.Import(); }
    void cmdURLWLImport_Click() { m_white.Import(); }
    void cmdURLBLExport_Click() { m_black.Export(); }
    void cmdURLWLExport_Click() { m_white.Export(); }
    void cmdBLCopySettings_Click() { m_black.Copy_Settings(); }
    void cmdWLCopySettings_Click() { m_white.Copy_Settings(); }
    void lvwBlackList_AfterLabelEdit(int& Cancel, QString& NewString) {
        m_black.After_Label_Edit(Cancel, NewString);
    }
    void lvwWhiteList_AfterLabelEdit(int& Cancel, QString& NewString) {
        m_white.After_Label_Edit(Cancel, NewString);
    }

protected:
    void Form_Load() override;

private:
    void Init_Columns();
    void Set_Tool_Tips();
    void Load_White_List() { m_white.Load_List(); }
    void Load_Black_List() { m_black.Load_List(); }
    void Set_Controls_Enabled();
    void Load_Pictures();
    void Enable_All_Controls(bool on);

    Panel m_blackPanel;
    Panel m_whitePanel;
    RuleList m_black;
    RuleList m_white;
};

} // namespace hv
