#include "filters/frmSingleListPage.h"

#include "core/clsLog.h"
#include "store/modDBFunctions.h"
#include "ui/Session.h"

#include <QVBoxLayout>

namespace hv {

SingleListPage::SingleListPage(const SingleListPageDesign& design)
    : RuleListPage(QLatin1String(design.formName)), m_design(design),
      m_panel(Build_Panel({design.frameName, design.labelName, design.textName, "cmdAdd", "cmdEdit",
                           "cmdRemove", "cmdImport", "cmdExport", "cmdCopySettings", design.listName},
                          design.frameCaption, design.labelCaption, *design.list,
                          ilsPage = Make_Image_List(QLatin1String(design.imagesName), {design.list->iconKey}),
                          this)),
      m_list(*design.list, m_panel.txt, m_panel.lvw, &cmdlgMain) {
    frame = m_panel.frame;
    lblPrompt = m_panel.label;
    txtRule = m_panel.txt;
    lvwRules = m_panel.lvw;
    cmdAdd = m_panel.add;
    cmdEdit = m_panel.edit;
    cmdRemove = m_panel.remove;
    cmdExport = m_panel.exportButton;
    cmdImport = m_panel.importButton;
    cmdCopySettings = m_panel.copySettings;

    chkEnable = new ui::CheckBox(QLatin1String(design.checkName), design.checkCaption, this);
    cmdClose = new ui::CommandButton(QStringLiteral("cmdClose"), QStringLiteral("Close"), this);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(chkEnable);
    layout->addWidget(frame);
    auto* bottom = new QHBoxLayout;
    bottom->addStretch(1);
    bottom->addWidget(cmdClose);
    layout->addLayout(bottom);

    Wire_Panel(
        m_panel, [this] { cmdAdd_Click(); }, [this] { cmdEdit_Click(); }, [this] { cmdRemove_Click(); },
        [this] { cmdImport_Click(); }, [this] { cmdExport_Click(); }, [this] { cmdCopySettings_Click(); });
    connect(cmdClose, &ui::CommandButton::Click, this, [this] { cmdClose_Click(); });
}

void SingleListPage::Form_Load() {
    Guarded([this] {
        Init_Columns();
        Set_Tool_Tips();
        Load_List();
        Set_Controls_Enabled();
        Load_Pictures();
        const Subject subject = Current_Subject();
        if (Is_Feature_Bit_Set(subject.computerId, subject.userId, m_design.list->featureBit))
            Check_Silently(chkEnable, 1);
        m_list.allowance.After_Load();
    });
}

void SingleListPage::Init_Columns() {
    Set_Caption(m_design.captionPrefix + Current_User_Text());
    m_list.Init_Column();
}

void SingleListPage::Set_Tool_Tips() {
    chkEnable->setToolTip(m_design.checkToolTip);
    txtRule->setToolTip(m_design.textToolTip);
    cmdExport->setToolTip(m_design.exportToolTip);
    cmdImport->setToolTip(m_design.importToolTip);
}

void SingleListPage::Set_Controls_Enabled() {
    Enable_Unless_Remote({txtRule, cmdAdd, cmdEdit, cmdRemove, cmdImport, chkEnable});
}

} // namespace hv
