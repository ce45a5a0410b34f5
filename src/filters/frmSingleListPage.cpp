#include "filters/frmSingleListPage.h"

#include "core/clsLog.h"
#include "store/modDBFunctions.h"
#include "ui/Session.h"

#include <QVBoxLayout>

namespace hv {

SingleListPage::SingleListPage(const SingleListPageDesign& design)
    : RuleListPage(QLatin1String(design.formName)), m_design(design),
      m_panel(Build_Panel(
          {.frame = design.frameName,
           .label = design.labelName,
           .text = design.textName,
           .add = "cmdAdd",
           .edit = "cmdEdit",
           .remove = "cmdRemove",
           .importButton = "cmdImport",
           .exportButton = "cmdExport",
           .copySettings = "cmdCopySettings",
           .list = design.listName},
          design.frameCaption, design.labelCaption, *design.list,
          m_images = Make_Image_List(QLatin1String(design.imagesName), {design.list->iconKey}), this)),
      m_list(*design.list, m_panel.txt, m_panel.lvw, &cmdlgMain) {
    m_enable = new ui::CheckBox(QLatin1String(design.checkName), design.checkCaption, this);
    cmdClose = new ui::CommandButton(QStringLiteral("cmdClose"), QStringLiteral("Close"), this);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_enable);
    layout->addWidget(m_panel.frame);
    auto* bottom = new QHBoxLayout;
    bottom->addStretch(1);
    bottom->addWidget(cmdClose);
    layout->addLayout(bottom);

    Wire_Panel(m_panel, m_list);
    connect(cmdClose, &ui::CommandButton::Click, this, [this] { cmdClose_Click(); });
    connect(m_enable, &ui::CheckBox::Click, this,
            [this] { Enable_Click(m_enable, m_design.featureWords, m_design.list->featureBit); });
}

void SingleListPage::Form_Load() {
    Guarded([this] {
        Init_Columns();
        Set_Tool_Tips();
        m_list.Load_List();
        Set_Controls_Enabled();
        Load_Panel_Pictures(m_panel, m_images);
        const Subject subject = Current_Subject();
        if (Is_Feature_Bit_Set(subject.computerId, subject.userId, m_design.list->featureBit))
            Check_Silently(m_enable, 1);
        m_list.allowance.After_Load();
    });
}

void SingleListPage::Init_Columns() {
    Set_Caption(m_design.captionPrefix + Current_User_Text());
    m_list.Init_Column();
}

void SingleListPage::Set_Tool_Tips() {
    m_enable->setToolTip(m_design.checkToolTip);
    m_panel.txt->setToolTip(m_design.textToolTip);
    m_panel.exportButton->setToolTip(m_design.exportToolTip);
    m_panel.importButton->setToolTip(m_design.importToolTip);
}

void SingleListPage::Set_Controls_Enabled() {
    Enable_Unless_Remote(
        {m_panel.txt, m_panel.add, m_panel.edit, m_panel.remove, m_panel.importButton, m_enable});
}

} // namespace hv
