#pragma once
// The main console: launcher of the pages, selector of the subject, display of mode and internet state.
#include "ui/Controls.h"
#include "ui/Form.h"
#include "ui/Images.h"
#include "ui/ListView.h"
#include "ui/Session.h"

#include <array>

class QAction;
class QFrame;
class QGroupBox;
class QMenu;
class QMenuBar;

namespace hv {

class frmMain final : public ui::Form {
    Q_OBJECT
public:
    frmMain();

    // Computer identifier of the subject: never assigned, stays 0.
    long m_lngComputerID = 0;
    // PROGRAM_MODE as last read.
    long m_lngHVMode = 0;

    void Get_Working_Mode();
    void Get_Internet_Mode();
    void Fill_Users_In_ComboBox();

    // Menu handlers; the feature lists run the same ones.
    void mnuRegisterFilters_Click();
    void mnuUnRegisterFilters_Click();
    void mnuUnInstall_Click();
    void mnuExit_Click();
    void mnuWebsiteFilter_Click();
    void mnuFileFilter_Click();
    void mnuEmailFilter_Click();
    void mnuPortFilter_Click();
    void mnuInternetScheduler_Click();
    void mnuInternetSettings_Click();
    void mnuEXEBlocker_Click();
    void mnuWindowBlocker_Click();
    void mnuApplicationScheduler_Click();
    void mnuApplicationSettings_Click();
    void mnuDeviceLock_Click();
    void mnuReporting_Click();
    void mnuGeneralOptions_Click();
    void mnuManageUsers_Click();
    void mnuCopySettings_Click();
    void mnuExceptionList_Click();
    void mnuFAQs_Click();
    void mnuOnline_Click();
    void mnuSupport_Click();
    void mnuProducts_Click();
    void mnuCheckUpdates_Click();
    void mnuAbout_Click();

    // The description of a feature entry (list, Tag); empty for a pair no list knows.
    static QString Feature_Description(int list, int tag);

    QWidget* picMain = nullptr;
    std::array<ui::ListView*, 3> lvwMain{};
    ui::Label* lblHeaderInternet = nullptr;
    ui::Label* lblHeaderAppnAndDevice = nullptr;
    ui::Label* lblHeaderGenSettings = nullptr;
    std::array<QFrame*, 3> lineSeparator{};
    QWidget* picSideBar = nullptr;
    QGroupBox* fraHVMode = nullptr;
    ui::Label* picHVMode = nullptr;
    ui::Label* lblHVMode = nullptr;
    QGroupBox* fraSelectUser = nullptr;
    ui::Label* lblUsers = nullptr;
    ui::ComboBox* cboUsers = nullptr;
    ui::Label* picInternetMode = nullptr;
    ui::Label* lblInternetMode = nullptr;
    QGroupBox* fraDescription = nullptr;
    ui::Label* lblDescHeader = nullptr;
    ui::Label* lblDescription = nullptr;
    ui::StatusBar* sbrMain = nullptr;
    ui::Timer* tmrMain = nullptr;
    ui::ImageList* ilsLarge = nullptr;
    ui::ImageList* ilsSmall = nullptr;
    ui::ImageList* ilsExtraLarge = nullptr;

    QMenuBar* mnuBar = nullptr;
    QMenu* mnuFile = nullptr;
    QMenu* mnuInternet = nullptr;
    QMenu* mnuApplication = nullptr;
    QMenu* mnuDevice = nullptr;
    QMenu* mnuReport = nullptr;
    QMenu* mnuTools = nullptr;
    QMenu* mnuHelp = nullptr;

protected:
    void Form_Load() override;
    void Form_Unload(int& Cancel) override;

private:
    void Build_Menu();
    void Build_Feature_Lists(QWidget* holder);
    void Build_Side_Bar();
    void Fill_Feature_Lists();
    void Set_Colours();
    void Run_Feature(int list, int tag);
    // A menu item named `name` in `menu`, running `handler` when chosen.
    QAction* Add_Item(QMenu* menu, const char* name, const char* caption, void (frmMain::*handler)());
    void Add_Separator(QMenu* menu, const char* name);

    void cboUsers_Click();
    void lvwMain_ItemClick(int Index, int item);
    void lvwMain_DblClick(int Index);
    void lvwMain_KeyPress(int Index, int& KeyAscii);
    void lvwMain_MouseMove(int Index, const QPoint& pos);
    void lblHVMode_Click();
    void picHVMode_Click();
    void lblInternetMode_Click();
    void lblDescHeader_Click();
    void sbrMain_PanelClick(int panel);
    void tmrMain_Timer();

    // The USER_ID last looked up for the selection; a failed lookup leaves it, so the tag keeps the
    // previous subject (or 0 before the first).
    long m_lngUserId = 0;
    QString m_baseStyle;
};

} // namespace hv
