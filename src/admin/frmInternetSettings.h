#pragma once
// How a blocked internet request is answered for the selected subject (the message kind, its text or a
// redirect address, saved by Apply), and the programs that always keep their internet access (the bypass
// list, written to the store at once by Add, Browse and Remove).
#include "ui/ApplyPage.h"
#include "ui/CommonDialog.h"
#include "ui/ListView.h"

namespace hv {

class StoreBatch;

class frmInternetSettings final : public ui::ApplyPage {
    Q_OBJECT
public:
    frmInternetSettings();

    ui::ComboBox* cboWindowType = nullptr;
    ui::Label* lblMessage = nullptr;
    ui::TextBox* txtBlMessage = nullptr;
    ui::Label* lblRedirectUrl = nullptr;
    ui::TextBox* txtRedirectUrl = nullptr;
    ui::TextBox* txtByPassedExe = nullptr;
    ui::CommandButton* cmdAdd = nullptr;
    ui::CommandButton* cmdBrowseExe = nullptr;
    ui::CommandButton* cmdRemove = nullptr;
    ui::ListView* lvwBypassedExe = nullptr;
    CommonDialog cmnDialogBrowse;

protected:
    void Form_Load() override;
    void cmdApply_Click() override;

private:
    void Set_Tool_Tips();
    void Load_Message_Settings();
    void Load_Bypass_List();
    void Set_Controls_Enabled();

    void cboWindowType_Click();
    void cmdAdd_Click();
    void cmdBrowseExe_Click();
    void cmdRemove_Click();

    // Writes one program in the open batch and shows its row; false when the store refused it.
    bool Add_Bypass(StoreBatch& batch, const QString& exe);
    // The list as the store holds it: what a batch runs after its commit failed.
    void Reload_Bypass_List();
    // Ends a press's batch. After a statement failed too, the list is loaded again from the store, so
    // that it shows what was really saved.
    void End_Batch(StoreBatch& batch, bool failed);

    // The row count at which the list needs its scroll bar.
    int m_intScrollRows = 0;
};

} // namespace hv
