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
      m_smtpPanel(Build_Panel({"fraSMTPFilter", "lblSMTPEmailAddress", "txtSMTPEmails", "cmdSMTPAdd",
                               "cmdSMTPEdit", "cmdSMTPRemove", "cmdSMTPImport", "cmdSMTPExport",
                               "cmdSMTPCopySettings", "lvwSMTPFilter"},
                              kSmtpFilter, kEnterAddress, rulelists::Smtp(), ilsEmailFilter, this)),
      m_pop3Panel(Build_Panel({"fraPOP3Filter", "lblPOP3EmailAddress", "txtPOP3Emails", "cmdPOP3Add",
                               "cmdPOP3Edit", "cmdPOP3Remove", "cmdPOP3Import", "cmdPOP3Export",
                               "cmdPOP3CopySettings", "lvwPOP3Filter"},
                              kPop3Filter, kEnterAddress, rulelists::Pop3(), ilsEmailFilter, this)),
      m_pop3(rulelists::Pop3(), m_pop3Panel.txt, m_pop3Panel.lvw, &cmnPOP3Dilog),
      m_smtp(rulelists::Smtp(), m_smtpPanel.txt, m_smtpPanel.lvw, &cmnSMTPDilog) {
    fraSMTPFilter = m_smtpPanel.frame;
    lblSMTPEmailAddress = m_smtpPanel.label;
    txtSMTPEmails = m_smtpPanel.txt;
    cmdSMTPAdd = m_smtpPanel.add;
    cmdSMTPEdit = m_smtpPanel.edit;
    cmdSMTPRemove = m_smtpPanel.remove;
    cmdSMTPImport = m_smtpPanel.importButton;
    cmdSMTPExport = m_smtpPanel.exportButton;
    cmdSMTPCopySettings = m_smtpPanel.copySettings;
    lvwSMTPFilter = m_smtpPanel.lvw;
    fraPOP3Filter = m_pop3Panel.frame;
    lblPOP3EmailAddress = m_pop3Panel.label;
    txtPOP3Emails = m_pop3Panel.txt;
    cmdPOP3Add = m_pop3Panel.add;
    cmdPOP3Edit = m_pop3Panel.edit;
    cmdPOP3Remove = m_pop3Panel.remove;
    cmdPOP3Import = m_pop3Panel.importButton;
    cmdPOP3Export = m_pop3Panel.exportButton;
    cmdPOP3CopySettings = m_pop3Panel.copySettings;
    lvwPOP3Filter = m_pop3Panel.lvw;

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
    layout->addWidget(fraSMTPFilter);
    layout->addWidget(fraPOP3Filter);
    auto* bottom = new QHBoxLayout;
    bottom->addStretch(1);
    bottom->addWidget(cmdClose);
    layout->addLayout(bottom);

    Wire_Panel(
        m_pop3Panel, [this] { cmdPOP3Add_Click(); }, [this] { cmdPOP3Edit_Click(); },
        [this] { cmdPOP3Remove_Click(); }, [this] { cmdPOP3Import_Click(); },
        [this] { cmdPOP3Export_Click(); }, [this] { cmdPOP3CopySettings_Click(); });
    Wire_Panel(
        m_smtpPanel, [this] { cmdSMTPAdd_Click(); }, [this] { cmdSMTPEdit_Click(); },
        [this] { cmdSMTPRemove_Click(); }, [this] { cmdSMTPImport_Click(); },
        [this] { cmdSMTPExport_Click(); }, [this] { cmdSMTPCopySettings_Click(); });
    connect(lvwPOP3Filter, &ui::ListView::AfterLabelEdit, this,
            &frmEmailFilter::lvwPOP3Filter_AfterLabelEdit);
    connect(lvwSMTPFilter, &ui::ListView::AfterLabelEdit, this,
            &frmEmailFilter::lvwSMTPFilter_AfterLabelEdit);
    connect(cboEmailFilter, &ui::ComboBox::Click, this, &frmEmailFilter::cboEmailFilter_Click);
    connect(chkEnableFilter, &ui::CheckBox::Click, this, &frmEmailFilter::chkEnableFilter_Click);
    connect(cmdClose, &ui::CommandButton::Click, this, [this] { cmdClose_Click(); });
}

void frmEmailFilter::Form_Load() {
    Guarded([this] {
        Init_Columns();
        Load_POP3_List();
        Load_SMTP_List();
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
    txtPOP3Emails->setToolTip(
        QStringLiteral("Type an email address or a part of one to block (eg: .example.com, .example.org)"));
    txtSMTPEmails->setToolTip(QStringLiteral(
        "Type an email address or a part of one to block (eg: someone@example.com, .example.com)"));
    cmdPOP3Add->setToolTip(QStringLiteral("Add the email/domain to blocked list"));
    cmdSMTPAdd->setToolTip(QStringLiteral("Add the email/domain to blocked list"));
    cmdPOP3Export->setToolTip(QStringLiteral("Export the blocked email list to a text file"));
    cmdSMTPExport->setToolTip(QStringLiteral("Export the blocked email list to a file"));
    cmdPOP3Import->setToolTip(QStringLiteral("Import the blocked emails from a text file"));
    cmdSMTPImport->setToolTip(QStringLiteral("Import the blocked emails from a file"));
}

void frmEmailFilter::Set_Controls_Enabled() {
    Enable_Unless_Remote({txtPOP3Emails, cmdPOP3Add, cmdPOP3Edit, cmdPOP3Remove, cmdPOP3Import, txtSMTPEmails,
                          cmdSMTPAdd, cmdSMTPEdit, cmdSMTPRemove, cmdSMTPImport, chkEnableFilter});
}

void frmEmailFilter::Load_Pictures() {
    Load_Panel_Pictures(m_pop3Panel, ilsEmailFilter);
    Load_Panel_Pictures(m_smtpPanel, ilsEmailFilter);
}

void frmEmailFilter::cboEmailFilter_Click() {
    Guarded([this] {
        long bit = 0;
        if (cboEmailFilter->Text() == kSmtpFilter) {
            fraSMTPFilter->setVisible(true);
            fraPOP3Filter->setVisible(false);
            chkEnableFilter->setText(QStringLiteral("Enable SMTP Filter"));
            bit = rulelists::Smtp().featureBit;
        } else if (cboEmailFilter->Text() == kPop3Filter) {
            fraPOP3Filter->setVisible(true);
            fraSMTPFilter->setVisible(false);
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
