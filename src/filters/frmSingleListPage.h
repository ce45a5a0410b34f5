#pragma once
// The single-list rule page (file filter, EXE blocker, window blocker): one list, one enable check box,
// one file dialog. Each page gives its names and words; the EXE page adds its Browse button.
#include "filters/frmRuleListPage.h"

namespace hv {

struct SingleListPageDesign {
    const char* formName;
    const RuleListSpec* list;
    QString captionPrefix; // "File Filter - "
    QString featureWords;  // in the enable and disable questions: "File Filter"
    const char* checkName;
    const char* frameName;
    const char* labelName;
    const char* textName;
    const char* listName;
    const char* imagesName;
    QString checkCaption;
    QString frameCaption;
    QString labelCaption;
    QString checkToolTip;
    QString textToolTip;
    QString exportToolTip;
    QString importToolTip;
};

class SingleListPage : public RuleListPage {
    Q_OBJECT
public:
    explicit SingleListPage(const SingleListPageDesign& design);

    ui::CheckBox* chkEnable = nullptr;
    QGroupBox* frame = nullptr;
    ui::Label* lblPrompt = nullptr;
    ui::TextBox* txtRule = nullptr;
    ui::ListView* lvwRules = nullptr;
    ui::CommandButton* cmdAdd = nullptr;
    ui::CommandButton* cmdEdit = nullptr;
    ui::CommandButton* cmdRemove = nullptr;
    ui::CommandButton* cmdExport = nullptr;
    ui::CommandButton* cmdImport = nullptr;
    ui::CommandButton* cmdCopySettings = nullptr;
    ui::ImageList* ilsPage = nullptr;
    CommonDialog cmdlgMain;

    void cmdAdd_Click() { m_list.Add(); }
    void cmdEdit_Click() { m_list.Edit(); }
    void cmdRemove_Click() { m_list.Remove(); }
    void cmdExport_Click() { m_list.Export(); }
    void cmdImport_Click() { m_list.Import(); }
    void cmdCopySettings_Click() { m_list.Copy_Settings(); }

protected:
    void Form_Load() override;
    void Init_Columns();
    void Set_Tool_Tips();
    void Load_List() { m_list.Load_List(); }
    virtual void Set_Controls_Enabled();
    void Load_Pictures() { Load_Panel_Pictures(m_panel, ilsPage); }

    // What the page's own named handlers of the check box and the list pass on to.
    void Enable_Box_Click() { Enable_Click(chkEnable, m_design.featureWords, m_design.list->featureBit); }
    void List_After_Label_Edit(int& Cancel, QString& NewString) {
        m_list.After_Label_Edit(Cancel, NewString);
    }

    RuleList& Rules() { return m_list; }
    const Panel& Page_Panel() const { return m_panel; }

private:
    SingleListPageDesign m_design;
    Panel m_panel;
    RuleList m_list;
};

} // namespace hv
