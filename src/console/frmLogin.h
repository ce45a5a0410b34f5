#pragma once
// The first window of every interactive session: one shared password guards the whole console.
#include "ui/Controls.h"
#include "ui/Form.h"

class QGroupBox;

namespace hv {

class frmLogin final : public ui::Form {
    Q_OBJECT
public:
    frmLogin();

    void cmdLogin_Click();
    void cmdClose_Click();
    void lblHomeSite_Click();

    QGroupBox* FrameLogin = nullptr;
    ui::Label* lblPassword = nullptr;
    ui::TextBox* txtPassword = nullptr;
    ui::CommandButton* cmdLogin = nullptr;
    ui::CommandButton* cmdClose = nullptr;
    ui::Label* lblHomeSite = nullptr;
    ui::Label* pictLogin = nullptr;

protected:
    void Form_Load() override;
    void Form_Unload(int& Cancel) override;

private:
    void txtPassword_KeyPress(int& KeyAscii);
    // Set once the password was right: the session then goes on in the main console.
    bool m_blnSuccess = false;
};

} // namespace hv
