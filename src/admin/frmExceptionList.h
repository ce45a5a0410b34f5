#pragma once
// The users exempt from filtering: a flat list of names for the whole installation (USER_EXCPN_TBL),
// belonging to no subject. The duplicate test is the store's, case ignored.
#include "admin/UserListPage.h"

namespace hv {

class frmExceptionList final : public UserListPage {
    Q_OBJECT
public:
    frmExceptionList();

    ui::Label* lblHomeSite = nullptr;

    void cmdAdd_Click() override;
    void Add_Exception_Name();
    void Fill_Exception_List();
    void lblHomeSite_Click();

protected:
    void Form_Load() override;

private:
    void Set_Form_Caption();
};

} // namespace hv
