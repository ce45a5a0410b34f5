#include "filters/frmWebsiteFilter.h"

#include "core/clsLog.h"
#include "store/modDBFunctions.h"
#include "ui/Session.h"

#include <QVBoxLayout>

namespace hv {

namespace {
const QString kBlackList = QStringLiteral("Black List");
const QString kWhiteList = QStringLiteral("White List");
const QString kEnterUrl = QStringLiteral("Enter Url (Eg: .example.com):");
} // namespace

frmWebsiteFilter::frmWebsiteFilter()
    : RuleListPage(QStringLiteral("frmWebsiteFilter")),
      ilsWebSiteFilter(Make_Image_List(QStringLiteral("ilsWebSiteFilter"),
                                       {rulelists::Black().iconKey, rulelists::White().iconKey})),
      m_blackPanel(Build_Panel(
          {"fraBlackList", "lblBlackURL", "txtBlackUrl", "cmdBlackAdd", "cmdBlackEdit", "cmdBlackRemove",
           "cmdURLBLImport", "cmdURLBLExport", "cmdBLCopySettings", "lvwBlackList"},
          kBlackList, kEnterUrl, rulelists::Black(), ilsWebSiteFilter, this, "picBlacklistContainer")),
      m_whitePanel(Build_Panel(
          {"fraWhiteList", "lblWhitelistUrl", "txtWhiteUrl", "cmdWhiteAdd", "cmdWhiteEdit", "cmdWhiteRemove",
           "cmdURLWLImport", "cmdURLWLExport", "cmdWLCopySettings", "lvwWhiteList"},
          kWhiteList, kEnterUrl, rulelists::White(), ilsWebSiteFilter, this, "picWhitelistContainer")),
      m_black(rulelists::Black(), m_blackPanel.txt, m_blackPanel.lvw, &cmnBLDilog),
      m_white(rulelists::White(), m_whitePanel.txt, m_whitePanel.lvw, &cmnWLDilog) {
    fraBlackList = m_blackPanel.frame;
    lblBlackURL = m_blackPanel.label;
    txtBlackUrl = m_blackPanel.txt;
    cmdBlackAdd = m_blackPanel.add;
    cmdBlackEdit = m_blackPanel.edit;
    cmdBlackRemove = m_blackPanel.remove;
    cmdURLBLImport = m_blackPanel.importButton;
    cmdURLBLExport = m_blackPanel.exportButton;
    cmdBLCopySettings = m_blackPanel.copySettings;
    lvwBlackList = m_blackPanel.lvw;
    fraWhiteList = m_whitePanel.frame;
    lblWhitelistUrl = m_whitePanel.label;
    txtWhiteUrl = m_whitePanel.txt;
    cmdWhiteAdd = m_whitePanel.add;
    cmdWhiteEdit = m_whitePanel.edit;
    cmdWhiteRemove = m_whitePanel.remove;
    cmdURLWLImport = m_whitePanel.importButton;
    cmdURLWLExport = m_whitePanel.exportButton;
    cmdWLCopySettings = m_whitePanel.copySettings;
    lvwWhiteList = m_whitePanel.lvw;

    // Each Add and Edit looks in both lists, the black list first; the words depend on the list that is
    // being changed.
    m_black.duplicates = {
        {lvwBlackList, QStringLiteral("URL already exist!."), QStringLiteral("URL already exist!.")},
        {lvwWhiteList, QStringLiteral("URL already exist in White List!."),
         QStringLiteral("URL already exist in White List!.")}};
    m_white.duplicates = {
        {lvwBlackList, QStringLiteral("URL already exist in Black List!."),
         QStringLiteral("URL already exist in Black List!.")},
        {lvwWhiteList, QStringLiteral("URL already exist!."), QStringLiteral("URL already exist!.")}};
    m_black.addNeedsConnection = true;
    for (RuleList* list : {&m_black, &m_white}) {
        list->enableAll = [this](bool on) { Enable_All_Controls(on); };
        list->yieldWhileImporting = true;
    }

    chkEnableUrlFilter =
        new ui::CheckBox(QStringLiteral("chkEnableUrlFilter"), QStringLiteral("Enable Website Filter"), this);
    lblUrlType = new ui::Label(QStringLiteral("lblUrlType"), QStringLiteral("Select URL List:"), this);
    cboUrlType = new ui::ComboBox(QStringLiteral("cboUrlType"), ui::ComboBox::DropDownList, this);
    cboUrlType->Add_Item(kBlackList);
    cboUrlType->Add_Item(kWhiteList);
    cmdClose = new ui::CommandButton(QStringLiteral("cmdClose"), QStringLiteral("Close"), this);

    auto* layout = new QVBoxLayout(this);
    auto* top = new QHBoxLayout;
    top->addWidget(lblUrlType);
    top->addWidget(cboUrlType);
    top->addStretch(1);
    top->addWidget(chkEnableUrlFilter);
    layout->addLayout(top);
    layout->addWidget(fraBlackList);
    layout->addWidget(fraWhiteList);
    auto* bottom = new QHBoxLayout;
    bottom->addStretch(1);
    bottom->addWidget(cmdClose);
    layout->addLayout(bottom);

    Wire_Panel(
        m_blackPanel, [this] { cmdBlackAdd_Click(); }, [this] { cmdBlackEdit_Click(); },
        [this] { cmdBlackRemove_Click(); }, [this] { cmdURLBLImport_Click(); },
        [this] { cmdURLBLExport_Click(); }, [this] { cmdBLCopySettings_Click(); });
    Wire_Panel(
        m_whitePanel, [this] { cmdWhiteAdd_Click(); }, [this] { cmdWhiteEdit_Click(); },
        [this] { cmdWhiteRemove_Click(); }, [this] { cmdURLWLImport_Click(); },
        [this] { cmdURLWLExport_Click(); }, [this] { cmdWLCopySettings_Click(); });
    connect(lvwBlackList, &ui::ListView::AfterLabelEdit, this,
            &frmWebsiteFilter::lvwBlackList_AfterLabelEdit);
    connect(lvwWhiteList, &ui::ListView::AfterLabelEdit, this,
            &frmWebsiteFilter::lvwWhiteList_AfterLabelEdit);
    connect(chkEnableUrlFilter, &ui::CheckBox::Click, this, &frmWebsiteFilter::chkEnableUrlFilter_Click);
    connect(cboUrlType, &ui::ComboBox::Click, this, &frmWebsiteFilter::cboUrlType_Click);
    connect(cmdClose, &ui::CommandButton::Click, this, [this] { cmdClose_Click(); });
}

void frmWebsiteFilter::Form_Load() {
    Guarded([this] {
        Init_Columns();
        Set_Tool_Tips();
        Load_White_List();
        Load_Black_List();
        Set_Controls_Enabled();
        const Subject subject = Current_Subject();
        long internet = 0;
        Get_Internet_On_Off(subject.computerId, subject.userId, internet);
        Load_Pictures();
        // With the internet on the black list is the one at work, otherwise the white list.
        cboUrlType->Set_ListIndex(internet == 1 ? 0 : 1);
        if (Is_Feature_Bit_Set(subject.computerId, subject.userId, rulelists::Black().featureBit))
            Check_Silently(chkEnableUrlFilter, 1);
        m_black.allowance.After_Load();
        m_white.allowance.After_Load();
    });
}

void frmWebsiteFilter::Init_Columns() {
    Set_Caption(QStringLiteral("Website Filter - ") + Current_User_Text());
    m_black.Init_Column();
    m_white.Init_Column();
}

void frmWebsiteFilter::Set_Tool_Tips() {
    chkEnableUrlFilter->setToolTip(QStringLiteral("Click to enable or disable the Website Filter"));
    txtBlackUrl->setToolTip(
        QStringLiteral("Type the URLs that are to be blocked (eg: .example.com, .example.org)"));
    txtWhiteUrl->setToolTip(QStringLiteral(
        "Type the URLs that are allowed when the internet is off (eg: .example.com, .example.org)"));
    cmdURLBLImport->setToolTip(QStringLiteral("Import Blocked URLs from a file"));
    cmdURLWLImport->setToolTip(QStringLiteral("Import White List URLs from a file"));
    cmdURLBLExport->setToolTip(QStringLiteral("Export Blocked URLs to a file"));
    cmdURLWLExport->setToolTip(QStringLiteral("Export White List URLs to a file"));
}

void frmWebsiteFilter::Set_Controls_Enabled() {
    Enable_Unless_Remote({txtBlackUrl, cmdBlackAdd, cmdBlackEdit, cmdBlackRemove, cmdURLBLImport, txtWhiteUrl,
                          cmdWhiteAdd, cmdWhiteEdit, cmdWhiteRemove, cmdURLWLImport, chkEnableUrlFilter});
}

void frmWebsiteFilter::Load_Pictures() {
    Load_Panel_Pictures(m_blackPanel, ilsWebSiteFilter);
    Load_Panel_Pictures(m_whitePanel, ilsWebSiteFilter);
}

void frmWebsiteFilter::Enable_All_Controls(bool on) {
    for (QWidget* w : std::initializer_list<QWidget*>{
             cboUrlType, txtBlackUrl, txtWhiteUrl, cmdBlackAdd, cmdWhiteAdd, cmdBlackEdit, cmdWhiteEdit,
             cmdBlackRemove, cmdWhiteRemove, cmdBLCopySettings, cmdWLCopySettings, cmdURLBLImport,
             cmdURLWLImport, cmdURLBLExport, cmdURLWLExport, chkEnableUrlFilter, cmdClose})
        w->setEnabled(on);
}

void frmWebsiteFilter::chkEnableUrlFilter_Click() {
    Enable_Click(chkEnableUrlFilter, QStringLiteral("WebSite Filter"), rulelists::Black().featureBit);
}

void frmWebsiteFilter::cboUrlType_Click() {
    // The selector only chooses what is seen.
    if (cboUrlType->Text() == kWhiteList) {
        fraWhiteList->setVisible(true);
        fraBlackList->setVisible(false);
    } else if (cboUrlType->Text() == kBlackList) {
        fraBlackList->setVisible(true);
        fraWhiteList->setVisible(false);
    }
}

} // namespace hv
