#pragma once
// The About form: the product, its version, and links to the site and to support and sales by mail.
#include "ui/Controls.h"
#include "ui/Form.h"

namespace hv {

class frmAbout final : public ui::Form {
    Q_OBJECT
public:
    frmAbout();

    void cmdOK_Click();
    void picLogo_Click();
    void lblHomeSite_Click();
    void lblSupportId_Click();
    void lblSalesId_Click();

    ui::Label* picLogo = nullptr;
    ui::Label* lblHalvenor = nullptr;
    ui::Label* lblVersion = nullptr;
    ui::Label* lblHomeSite = nullptr;
    ui::Label* lblSupportId = nullptr;
    ui::Label* lblSalesId = nullptr;
    ui::CommandButton* cmdOK = nullptr;

protected:
    void Form_Load() override;
    void Form_KeyPress(int& KeyAscii) override;
};

} // namespace hv
