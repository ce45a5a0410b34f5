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
      m_blackPanel(Build_Panel({.frame = "fraBlackList",
                                .label = "lblBlackURL",
                                .text = "txtBlackUrl",
                                .add = "cmdBlackAdd",
                                .edit = "cmdBlackEdit",
                                .remove = "cmdBlackRemove",
                                .importButton = "cmdURLBLImport",
                                .exportButton = "cmdURLBLExport",
                                .copySettings = "cmdBLCopySettings",
                                .list = "lvwBlackList"},
                               kBlackList, kEnterUrl, rulelists::Black(), ilsWebSiteFilter, this,
                               "picBlacklistContainer")),
      m_whitePanel(Build_Panel({.frame = "fraWhiteList",
                                .label = "lblWhitelistUrl",
                                .text = "txtWhiteUrl",
                                .add = "cmdWhiteAdd",
                                .edit = "cmdWhiteEdit",
                                .remove = "cmdWhiteRemove",
                                .importButton = "cmdURLWLImport",
                                .exportButton = "cmdURLWLExport",
                                .copySettings = "cmdWLCopySettings",
                                .list = "lvwWhiteList"},
                               kWhiteList, kEnterUrl, rulelists::White(), ilsWebSiteFilter, this,
                               "picWhitelistContainer")),
      m_black(rulelists::Black(), m_blackPanel.txt, m_blackPanel.lvw, &cmnBLDilog),
      m_white(rulelists::White(), m_whitePanel.txt, m_whitePanel.lvw, &cmnWLDilog) {

    // Each Add and Edit looks in both lists, the black list first; the words depend on the list that is
    // being changed.
    m_black.duplicates = {
        {m_blackPanel.lvw, QStringLiteral("URL already exist!."), QStringLiteral("URL already exist!.")},
        {m_whitePanel.lvw, QStringLiteral("URL already exist in White List!."),
         QStringLiteral("URL already exist in White List!.")}};
    m_white.duplicates = {
        {m_blackPanel.lvw, QStringLiteral("URL already exist in Black List!."),
         QStringLiteral("URL already exist in Black List!.")},
        {m_whitePanel.lvw, QStringLiteral("URL already exist!."), QStringLiteral("URL already exist!.")}};
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
    layout->addWidget(m_blackPanel.frame);
    layout->addWidget(m_whitePanel.frame);
    auto* bottom = new QHBoxLayout;
    bottom->addStretch(1);
    bottom->addWidget(cmdClose);
    layout->addLayout(bottom);

    Wire_Panel(m_blackPanel, m_black);
    Wire_Panel(m_whitePanel, m_white);
    connect(chkEnableUrlFilter, &ui::CheckBox::Click, this, &frmWebsiteFilter::chkEnableUrlFilter_Click);
    connect(cboUrlType, &ui::ComboBox::Click, this, &frmWebsiteFilter::cboUrlType_Click);
    connect(cmdClose, &ui::CommandButton::Click, this, [this] { cmdClose_Click(); });
}

void frmWebsiteFilter::Form_Load() {
    Guarded([this] {
        Init_Columns();
        Set_Tool_Tips();
        m_white.Load_List();
        m_black.Load_List();
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
    m_blackPanel.txt->setToolTip(
        QStringLiteral("Type the URLs that are to be blocked (eg: .example.com, .example.org)"));
    m_whitePanel.txt->setToolTip(QStringLiteral(
        "Type the URLs that are allowed when the internet is off (eg: .example.com, .example.org)"));
    m_blackPanel.importButton->setToolTip(QStringLiteral("Import Blocked URLs from a file"));
    m_whitePanel.importButton->setToolTip(QStringLiteral("Import White List URLs from a file"));
    m_blackPanel.exportButton->setToolTip(QStringLiteral("Export Blocked URLs to a file"));
    m_whitePanel.exportButton->setToolTip(QStringLiteral("Export White List URLs to a file"));
}

void frmWebsiteFilter::Set_Controls_Enabled() {
    Enable_Unless_Remote({m_blackPanel.txt, m_blackPanel.add, m_blackPanel.edit, m_blackPanel.remove,
                          m_blackPanel.importButton, m_whitePanel.txt, m_whitePanel.add, m_whitePanel.edit,
                          m_whitePanel.remove, m_whitePanel.importButton, chkEnableUrlFilter});
}

void frmWebsiteFilter::Load_Pictures() {
    Load_Panel_Pictures(m_blackPanel, ilsWebSiteFilter);
    Load_Panel_Pictures(m_whitePanel, ilsWebSiteFilter);
}

void frmWebsiteFilter::Enable_All_Controls(bool on) {
    for (QWidget* w : std::initializer_list<QWidget*>{
             cboUrlType, m_blackPanel.txt, m_whitePanel.txt, m_blackPanel.add, m_whitePanel.add,
             m_blackPanel.edit, m_whitePanel.edit, m_blackPanel.remove, m_whitePanel.remove,
             m_blackPanel.copySettings, m_whitePanel.copySettings, m_blackPanel.importButton,
             m_whitePanel.importButton, m_blackPanel.exportButton, m_whitePanel.exportButton,
             chkEnableUrlFilter, cmdClose})
        w->setEnabled(on);
}

void frmWebsiteFilter::chkEnableUrlFilter_Click() {
    Enable_Click(chkEnableUrlFilter, QStringLiteral("WebSite Filter"), rulelists::Black().featureBit);
}

void frmWebsiteFilter::cboUrlType_Click() {
    // The selector only chooses what is seen.
    if (cboUrlType->Text() == kWhiteList) {
        m_whitePanel.frame->setVisible(true);
        m_blackPanel.frame->setVisible(false);
    } else if (cboUrlType->Text() == kBlackList) {
        m_blackPanel.frame->setVisible(true);
        m_whitePanel.frame->setVisible(false);
    }
}

} // namespace hv
