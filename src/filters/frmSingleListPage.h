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

protected:
    void Form_Load() override;
    virtual void Set_Controls_Enabled();

    RuleList& Rules() { return m_list; }
    const Panel& Page_Panel() const { return m_panel; }
    ui::ListView* Rule_List() const { return m_panel.lvw; }
    CommonDialog cmdlgMain;

private:
    void Init_Columns();
    void Set_Tool_Tips();

    SingleListPageDesign m_design;
    ui::ImageList* m_images = nullptr;
    Panel m_panel;
    RuleList m_list;
    ui::CheckBox* m_enable = nullptr;
};

} // namespace hv
