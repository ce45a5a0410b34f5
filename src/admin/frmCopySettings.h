#pragma once
// Copies one user's policy, feature by feature, onto other users. The feature pages open it with their
// own feature ticked.
#include "ui/Controls.h"
#include "ui/Form.h"
#include "ui/ListView.h"

#include <QGroupBox>

namespace hv {

class frmCopySettings final : public ui::Form {
    Q_OBJECT
public:
    frmCopySettings();
    // Fills the features, ticks the one with this text (nothing for a text that names none) and shows
    // the page modally.
    void Show_This_Form(const QString& strFeature, QWidget* owner = nullptr);
    void Open(const QString& word, QWidget* owner) override { Show_This_Form(word, owner); }

    ui::Label* lblSelectUser;
    ui::ComboBox* cboUsers;
    QGroupBox* fraCopySettings;
    ui::ListView* lvwFeatures;
    ui::CheckBox* chkSelectAllFeatures;
    ui::ListView* lvwDestinationUsers;
    ui::CheckBox* chkSelectAllDestinations;
    ui::CommandButton* cmdCopySettings;
    ui::CommandButton* cmdClose;
    ui::ImageList* ilsCopySettings;

    void cmdClose_Click();

protected:
    void Form_Load() override;
    void Form_KeyPress(int& KeyAscii) override;

private:
    void Set_Form_Caption();
    void Set_Controls_Enabled();
    void Fill_Users_In_ComboBox();
    void Fill_Features_In_Listview();
    void Fill_Destinations();
    void Find_User_Index(const QString& strName, int& intIndex) const;
    static void Count_Checked_Items(const ui::ListView& list, int& intCount);
    void Clear_Selections();
    void Update_Copy_Button();

    void cboUsers_Click();
    void chkSelectAllFeatures_Click();
    void chkSelectAllDestinations_Click();
    void List_ItemClick(ui::ListView* list, int index);
    void cmdCopySettings_Click();

    // The row whose box the user has just ticked or unticked, until the click that did it has passed.
    const ui::ListView* m_tickedByBox = nullptr;
    int m_tickedRow = 0;
};

} // namespace hv
