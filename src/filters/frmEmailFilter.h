#pragma once
// Blocked mail addresses of the subject: one list for incoming (POP3) and one for outgoing (SMTP) mail.
// The selector chooses the list shown and what the single enable check box switches.
#include "filters/frmRuleListPage.h"

namespace hv {

class frmEmailFilter final : public RuleListPage {
    Q_OBJECT
public:
    frmEmailFilter();

protected:
    void Form_Load() override;

private:
    ui::Label* lblSelectEmailFilter;
    ui::ComboBox* cboEmailFilter;
    ui::CheckBox* chkEnableFilter;
    ui::ImageList* ilsEmailFilter;
    CommonDialog cmnPOP3Dilog;
    CommonDialog cmnSMTPDilog;

    void cboEmailFilter_Click();
    void chkEnableFilter_Click();

    void Init_Columns();
    void Set_Tool_Tips();
    void Set_Controls_Enabled();
    void Load_Pictures();

    Panel m_smtpPanel;
    Panel m_pop3Panel;
    RuleList m_pop3;
    RuleList m_smtp;
};

} // namespace hv
