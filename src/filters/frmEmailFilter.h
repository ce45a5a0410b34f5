#pragma once
// Blocked mail addresses of the subject: one list for incoming (POP3) and one for outgoing (SMTP) mail.
// The selector chooses the list shown and what the single enable check box switches.
#include "filters/frmRuleListPage.h"

namespace hv {

class frmEmailFilter final : public RuleListPage {
    Q_OBJECT
public:
    frmEmailFilter();

    ui::Label* lblSelectEmailFilter;
    ui::ComboBox* cboEmailFilter;
    ui::CheckBox* chkEnableFilter;
    QGroupBox* fraSMTPFilter;
    QGroupBox* fraPOP3Filter;
    ui::Label* lblSMTPEmailAddress;
    ui::Label* lblPOP3EmailAddress;
    ui::TextBox* txtPOP3Emails;
    ui::TextBox* txtSMTPEmails;
    ui::CommandButton* cmdPOP3Add;
    ui::CommandButton* cmdSMTPAdd;
    ui::CommandButton* cmdPOP3Edit;
    ui::CommandButton* cmdSMTPEdit;
    ui::CommandButton* cmdPOP3Remove;
    ui::CommandButton* cmdSMTPRemove;
    ui::CommandButton* cmdPOP3Export;
    ui::CommandButton* cmdSMTPExport;
    ui::CommandButton* cmdPOP3Import;
    ui::CommandButton* cmdSMTPImport;
    ui::CommandButton* cmdPOP3CopySettings;
    ui::CommandButton* cmdSMTPCopySettings;
    ui::ListView* lvwPOP3Filter;
    ui::ListView* lvwSMTPFilter;
    ui::ImageList* ilsEmailFilter;
    CommonDialog cmnPOP3Dilog;
    CommonDialog cmnSMTPDilog;

    void cboEmailFilter_Click();
    void chkEnableFilter_Click();
    void cmdPOP3Add_Click() { m_pop3.Add(); }
    void cmdSMTPAdd_Click() { m_smtp.Add(); }
    void cmdPOP3Edit_Click() { m_pop3.Edit(); }
    void cmdSMTPEdit_Click() { m_smtp.Edit(); }
    void cmdPOP3Remove_Click() { m_pop3.Remove(); }
    void cmdSMTPRemove_Click() { m_smtp.Remove(); }
    void cmdPOP3Export_Click() { m_pop3.Export(); }
    void cmdSMTPExport_Click() { m_smtp.Export(); }
    void cmdPOP3Import_Click() { m_pop3.Import(); }
    void cmdSMTPImport_Click() { m_smtp.Import(); }
    void cmdPOP3CopySettings_Click() { m_pop3.Copy_Settings(); }
    void cmdSMTPCopySettings_Click() { m_smtp.Copy_Settings(); }
    void lvwPOP3Filter_AfterLabelEdit(int& Cancel, QString& NewString) {
        m_pop3.After_Label_Edit(Cancel, NewString);
    }
    void lvwSMTPFilter_AfterLabelEdit(int& Cancel, QString& NewString) {
        m_smtp.After_Label_Edit(Cancel, NewString);
    }

protected:
    void Form_Load() override;

private:
    void Init_Columns();
    void Set_Tool_Tips();
    void Load_POP3_List() { m_pop3.Load_List(); }
    void Load_SMTP_List() { m_smtp.Load_List(); }
    void Set_Controls_Enabled();
    void Load_Pictures();

    Panel m_smtpPanel;
    Panel m_pop3Panel;
    RuleList m_pop3;
    RuleList m_smtp;
};

} // namespace hv
