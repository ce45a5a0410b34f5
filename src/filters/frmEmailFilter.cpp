#include "filters/frmEmailFilter.h"

#include "core/clsLog.h"
#include "store/modDBFunctions.h"
#include "ui/Session.h"

#include <QVBoxLayout>

namespace hv {

namespace {
const QString kSmtpFilter = QStringLiteral("SMTP Filter");
const QString kPop3Filter = QStringLiteral("POP3 Filter");
const QString kEnterAddress = QStringLiteral("Enter Email Address (Eg: someone@example.com):");
} // namespace

frmEmailFilter::frmEmailFilter()
    : RuleListPage(QStringLiteral("frmEmailFilter")),
      ilsEmailFilter(Make_Image_List(QStringLiteral("ilsEmailFilter"),
                                     {rulelists::Pop3().iconKey, rulelists::Smtp().iconKey})),
      m_smtpPanel(Build_Panel({.frame = "fraSMTPFilter",
                               .label = "lblSMTPEmailAddress",
                               .text = "txtSMTPEmails",
                               .add = "cmdSMTPAdd",
                               .edit = "cmdSMTPEdit",
                               .remove = "cmdSMTPRemove",
                               .importButton = "cmdSMTPImport",
                               .exportButton = "cmdSMTPExport",
                               .copySettings = "cmdSMTPCopySettings",
                               .list = "lvwSMTPFilter"},
                              kSmtpFilter, kEnterAddress, rulelists::Smtp(), ilsEmailFilter, this)),
      m_pop3Panel(Build_Panel({.frame = "fraPOP3Filter",
                               .label = "lblPOP3EmailAddress",
                               .text = "txtPOP3Emails",
                               .add = "cmdPOP3Add",
                               .edit = "cmdPOP3Edit",
                               .remove = "cmdPOP3Remove",
                               .importButton = "cmdPOP3Import",
                               .exportButton = "cmdPOP3Export",
                               .copySettings = "cmdPOP3CopySettings",
                               .list = "lvwPOP3Filter"},
                              kPop3Filter, kEnterAddress, rulelists::Pop3(), ilsEmailFilter, this)),
      m_pop3(rulelists::Pop3(), m_pop3Panel.txt, m_pop3Panel.lvw, &cmnPOP3Dilog),
      m_smtp(rulelists::Smtp(), m_smtpPanel.txt, m_smtpPanel.lvw, &cmnSMTPDilog) {

    lblSelectEmailFilter =
        new ui::Label(QStringLiteral("lblSelectEmailFilter"), QStringLiteral("Select Email Filter:"), this);
    cboEmailFilter = new ui::ComboBox(QStringLiteral("cboEmailFilter"), ui::ComboBox::DropDownList, this);
    cboEmailFilter->Add_Item(kSmtpFilter);
    cboEmailFilter->Add_Item(kPop3Filter);
    chkEnableFilter =
        new ui::CheckBox(QStringLiteral("chkEnableFilter"), QStringLiteral("Enable Email Filter"), this);
    cmdClose = new ui::CommandButton(QStringLiteral("cmdClose"), QStringLiteral("Close"), this);

    auto* layout = new QVBoxLayout(this);
    auto* top = new QHBoxLayout;
    top->addWidget(lblSelectEmailFilter);
    top->addWidget(cboEmailFilter);
    top->addStretch(1);
    top->addWidget(chkEnableFilter);
    layout->addLayout(top);
    layout->addWidget(m_smtpPanel.frame);
    layout->addWidget(m_pop3Panel.frame);
    auto* bottom = new QHBoxLayout;
    bottom->addStretch(1);
    bottom->addWidget(cmdClose);
    layout->addLayout(bottom);

    Wire_Panel(m_pop3Panel, m_pop3);
    Wire_Panel(m_smtpPanel, m_smtp);
    connect(cboEmailFilter, &ui::ComboBox::Click, this, &frmEmailFilter::cboEmailFilter_Click);
    connect(chkEnableFilter, &ui::CheckBox::Click, this, &frmEmailFilter::chkEnableFilter_Click);
    connect(cmdClose, &ui::CommandButton::Click, this, [this] { cmdClose_Click(); });
}

void frmEmailFilter::Form_Load() {
    Guarded([this] {
        Init_Columns();
        m_pop3.Load_List();
        m_smtp.Load_List();
        Set_Controls_Enabled();
        // The selector's click reads the switch of the list it shows.
        cboEmailFilter->Set_ListIndex(0);
        Set_Tool_Tips();
        Load_Pictures();
        m_smtp.allowance.After_Load();
        m_pop3.allowance.After_Load();
    });
}

void frmEmailFilter::Init_Columns() {
    Set_Caption(QStringLiteral("Email Filter - ") + Current_User_Text());
    m_pop3.Init_Column();
    m_smtp.Init_Column();
}

void frmEmailFilter::Set_Tool_Tips() {
    chkEnableFilter->setToolTip(QStringLiteral("Enable/Disable the ") + cboEmailFilter->Text());
    m_pop3Panel.txt->setToolTip(
        QStringLiteral("Type an email address or a part of one to block (eg: .example.com, .example.org)"));
    m_smtpPanel.txt->setToolTip(QStringLiteral(
        "Type an email address or a part of one to block (eg: someone@example.com, .example.com)"));
    m_pop3Panel.add->setToolTip(QStringLiteral("Add the email/domain to blocked list"));
    m_smtpPanel.add->setToolTip(QStringLiteral("Add the email/domain to blocked list"));
    m_pop3Panel.exportButton->setToolTip(QStringLiteral("Export the blocked email list to a text file"));
    m_smtpPanel.exportButton->setToolTip(QStringLiteral("Export the blocked email list to a file"));
    m_pop3Panel.importButton->setToolTip(QStringLiteral("Import the blocked emails from a text file"));
    m_smtpPanel.importButton->setToolTip(QStringLiteral("Import the blocked emails from a file"));
}

void frmEmailFilter::Set_Controls_Enabled() {
    Enable_Unless_Remote({m_pop3Panel.txt, m_pop3Panel.add, m_pop3Panel.edit, m_pop3Panel.remove,
                          m_pop3Panel.importButton, m_smtpPanel.txt, m_smtpPanel.add, m_smtpPanel.edit,
                          m_smtpPanel.remove, m_smtpPanel.importButton, chkEnableFilter});
}

void frmEmailFilter::Load_Pictures() {
    Load_Panel_Pictures(m_pop3Panel, ilsEmailFilter);
    Load_Panel_Pictures(m_smtpPanel, ilsEmailFilter);
}

void frmEmailFilter::cboEmailFilter_Click() {
    Guarded([this] {
        long bit = 0;
        if (cboEmailFilter->Text() == kSmtpFilter) {
            m_smtpPanel.frame->setVisible(true);
            m_pop3Panel.frame->setVisible(false);
            chkEnableFilter->setText(QStringLiteral("Enable SMTP Filter"));
            bit = rulelists::Smtp().featureBit;
        } else if (cboEmailFilter->Text() == kPop3Filter) {
            m_pop3Panel.frame->setVisible(true);
            m_smtpPanel.frame->setVisible(false);
            chkEnableFilter->setText(QStringLiteral("Enable POP3 Filter"));
            bit = rulelists::Pop3().featureBit;
        } else {
            return;
        }
        // Moving the selector only shows the switch of the other list; it writes nothing.
        const Subject subject = Current_Subject();
        Check_Silently(chkEnableFilter, Is_Feature_Bit_Set(subject.computerId, subject.userId, bit) ? 1 : 0);
    });
}

void frmEmailFilter::chkEnableFilter_Click() {
    const long bit =
        cboEmailFilter->ListIndex() == 0 ? rulelists::Smtp().featureBit : rulelists::Pop3().featureBit;
    Enable_Click(chkEnableFilter, cboEmailFilter->Text(), bit);
}

} // namespace hv
