#pragma once
// How a blocked application or window is answered for the selected subject: silently, or with a message
// box showing a text.
#include "ui/ApplyPage.h"

namespace hv {

class frmApplicationSettings final : public ui::ApplyPage {
    Q_OBJECT
public:
    frmApplicationSettings();

    ui::ComboBox* cboApplnWindowType = nullptr;
    ui::Label* lblBlockedApplicationMessage = nullptr;
    ui::TextBox* txtBlkdApplnMsg = nullptr;

protected:
    void Form_Load() override;
    void cmdApply_Click() override;

private:
    void Set_Tool_Tips();
    void Load_Message();
    void Set_Controls_Enabled();
    void cboApplnWindowType_Click();
};

} // namespace hv
