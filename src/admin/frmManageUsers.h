#pragma once
// The terminal-server users for whom a policy can be set: the rows of USER_TBL, with the reserved
// "[All Users...]" row that can be neither renamed nor removed, import and export of the names as a list
// text file, and the main console's user selector read again when the page closes.
#include "admin/UserListPage.h"
#include "ui/CommonDialog.h"

namespace hv {

namespace ui {
class WholeWordIndex;
}

class frmManageUsers final : public UserListPage {
    Q_OBJECT
public:
    frmManageUsers();

    ui::CommandButton* cmdImport = nullptr;
    ui::CommandButton* cmdExport = nullptr;
    CommonDialog cmdlgMain;

    // 1 added; 0 the store refused; -1 the name is not valid; -2 the name is in the list.
    int Add_New_User(const QString& strName);
    void Fill_Users_List();

    void cmdAdd_Click() override;
    void cmdImport_Click();
    void cmdExport_Click();
    void lvwUsers_BeforeLabelEdit(int& Cancel);

protected:
    void Form_Load() override;
    void Form_QueryUnload(int& Cancel, int UnloadMode) override;
    void Form_Unload(int& Cancel) override;

private:
    void Set_Controls_Enabled();
    void Import_File();

    // While an import runs: its connection and the search over the names listed so far.
    StoreBatch* m_batch = nullptr;
    ui::WholeWordIndex* m_listed = nullptr;
};

} // namespace hv
