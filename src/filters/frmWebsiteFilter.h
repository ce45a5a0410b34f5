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

protected:
    void Form_Load() override;

private:
    ui::CheckBox* chkEnableUrlFilter;
    ui::Label* lblUrlType;
    ui::ComboBox* cboUrlType;
    ui::ImageList* ilsWebSiteFilter;
    CommonDialog cmnBLDilog;
    CommonDialog cmnWLDilog;

    void chkEnableUrlFilter_Click();
    void cboUrlType_Click();

    void Init_Columns();
    void Set_Tool_Tips();
    void Set_Controls_Enabled();
    void Load_Pictures();
    void Enable_All_Controls(bool on);

    Panel m_blackPanel;
    Panel m_whitePanel;
    RuleList m_black;
    RuleList m_white;
};

} // namespace hv
