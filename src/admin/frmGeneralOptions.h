#pragma once
// The settings of the installation rather than of a subject: the program mode, the console password,
// the client service options and the remote mode, all in the one row of SETTINGS_TBL. Apply writes them
// field by field and stops at the first bad input; what it wrote before that stays written.
#include "ui/ApplyPage.h"
#include "ui/ListView.h"

#include <QGroupBox>
#include <array>

namespace hv {

class frmGeneralOptions final : public ui::ApplyPage {
    Q_OBJECT
public:
    frmGeneralOptions();

    ui::TreeView* tvwGenOptions = nullptr;
    // Only the tree's nodes show frames 0 and 1; frames 2 and 3 have no node, yet their controls are
    // loaded at Form_Load and written by Apply as they stand.
    std::array<QGroupBox*, 4> fraGeneralOptions{};

    ui::Label* picMode = nullptr;
    ui::OptionButton* optComputer = nullptr;
    ui::OptionButton* optUser = nullptr;

    ui::Label* picPassword = nullptr;
    ui::TextBox* txtNewPassword = nullptr;
    ui::TextBox* txtConfirmPassword = nullptr;

    ui::ListView* lvwClientSettings = nullptr;

    ui::Label* picRemoteMode = nullptr;
    ui::OptionButton* optDisableRemoteMode = nullptr;
    ui::OptionButton* optEnableRemoteMode = nullptr;
    ui::TextBox* txtServerName = nullptr;
    ui::TextBox* txtClientPortNo = nullptr;

protected:
    void Form_Load() override;
    void cmdApply_Click() override;

private:
    QGroupBox* Build_Frame(int index, const QString& caption);
    void Build_Mode_Frame();
    void Build_Password_Frame();
    void Build_Client_Frame();
    void Build_Remote_Frame();

    void Show_Options_Frame(int index);
    void Show_Client_Options();
    void Read_Client_Options();
    void Show_Program_Mode();
    void Show_Remote_Settings();
    void Set_Controls_Enabled();

    void tvwGenOptions_NodeClick(const QString& key);
    void Mode_Click(const char* picture);
    void Remote_Mode_Click(bool remote);
    void txtNewPassword_KeyPress(int& KeyAscii);
    void txtConfirmPassword_KeyPress(int& KeyAscii);
    void txtClientPortNo_KeyPress(int& KeyAscii);
    // After a refused entry: the box has the focus with its whole text selected.
    static void Select_All_In(ui::TextBox* box);

    // CLIENT_OPTIONS as read at load: Apply changes only the bits of the list's items.
    long m_lngClientOptions = 0;
};

// The CLIENT_OPTIONS bit of a client settings item: its key is "c" and the power of two.
long Client_Option_Bit(const QString& key);
// True when the AND of both is above 0.
bool Is_Client_Option_Set(long options, long bit);

} // namespace hv
