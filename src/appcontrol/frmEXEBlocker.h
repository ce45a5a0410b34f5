#pragma once
// The programs the subject may not run, by the name the filter provider gives them, and the EXE
// Blocker switch. Browse picks programs from disk and asks the provider library for each one's name.
#include "filters/frmSingleListPage.h"

namespace hv {

class frmEXEBlocker final : public SingleListPage {
    Q_OBJECT
public:
    frmEXEBlocker();

    ui::CheckBox* chkEnableEXEBlocker;
    QGroupBox* frameEXEBlocker;
    ui::Label* lblEXEName;
    ui::TextBox* txtEXEBlocker;
    ui::ListView* lvwEXEBlocker;
    ui::ImageList* ilsEXEBlocker;
    ui::CommandButton* cmdBrowseExe;

    void chkEnableEXEBlocker_Click() { Enable_Box_Click(); }
    void lvwEXEBlocker_AfterLabelEdit(int& Cancel, QString& NewString) {
        List_After_Label_Edit(Cancel, NewString);
    }
    void cmdBrowseExe_Click();

protected:
    void Set_Controls_Enabled() override;
};

} // namespace hv
