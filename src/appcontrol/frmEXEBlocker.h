#pragma once
// The programs the subject may not run, by the name the filter provider gives them, and the EXE
// Blocker switch. Browse picks programs from disk and asks the provider library for each one's name.
#include "filters/frmSingleListPage.h"

namespace hv {

class frmEXEBlocker final : public SingleListPage {
    Q_OBJECT
public:
    frmEXEBlocker();

protected:
    void Set_Controls_Enabled() override;

private:
    void cmdBrowseExe_Click();

    ui::CommandButton* cmdBrowseExe;
};

} // namespace hv
