#include "appcontrol/frmApplicationSettings.h"

#include "core/clsLog.h"
#include "core/modGlobal.h"
#include "store/modCommonFuns.h"
#include "store/modDBFunctions.h"
#include "ui/Session.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QVBoxLayout>

namespace hv {

frmApplicationSettings::frmApplicationSettings() : ui::ApplyPage(QStringLiteral("frmApplicationSettings")) {
    auto* frame = new QGroupBox(QStringLiteral("Application Settings"), this);
    frame->setObjectName(QStringLiteral("fraApplicationSettings"));
    auto* lblShowMsgIn =
        new ui::Label(QStringLiteral("lblShowMsgIn"), QStringLiteral("Show Blocked Message In:"), frame);
    cboApplnWindowType =
        new ui::ComboBox(QStringLiteral("cboApplnWindowType"), ui::ComboBox::DropDownList, frame);
    lblBlockedApplicationMessage = new ui::Label(QStringLiteral("lblBlockedApplicationMessage"),
                                                 QStringLiteral("Blocked Application Message:"), frame);
    txtBlkdApplnMsg = new ui::TextBox(QStringLiteral("txtBlkdApplnMsg"), frame);
    txtBlkdApplnMsg->Set_Multi_Line(true);
    txtBlkdApplnMsg->setMinimumWidth(360);

    auto* grid = new QGridLayout(frame);
    grid->addWidget(lblShowMsgIn, 0, 0);
    grid->addWidget(cboApplnWindowType, 0, 1);
    grid->addWidget(lblBlockedApplicationMessage, 1, 0, 1, 2);
    grid->addWidget(txtBlkdApplnMsg, 2, 0, 1, 2);
    grid->setRowStretch(3, 1);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(frame);
    layout->addLayout(Button_Row(true));

    connect(cboApplnWindowType, &ui::ComboBox::Click, this,
            [this] { Guarded([this] { cboApplnWindowType_Click(); }); });
    connect(txtBlkdApplnMsg, &ui::TextBox::Change, this, [this] { Mark_Changed(); });
}

void frmApplicationSettings::Form_Load() {
    Guarded([this] {
        Set_Caption(QStringLiteral("Application Settings - ") + Current_User_Text());
        Set_Tool_Tips();
        cboApplnWindowType->Add_Item(QStringLiteral("Do not show any messages (block silently)"));
        cboApplnWindowType->Add_Item(QStringLiteral("Message Box"));
        Load_Message();
        cmdApply->setEnabled(false);
        Set_Controls_Enabled();
    });
}

void frmApplicationSettings::Set_Tool_Tips() {
    cboApplnWindowType->setToolTip(QStringLiteral("Select an option to show Blocked Application Message"));
    txtBlkdApplnMsg->setToolTip(
        QStringLiteral("Provides a space for you to type Blocked Application Message"));
}

void frmApplicationSettings::Load_Message() {
    const Subject subject = Current_Subject();
    long type = 0;
    QString text;
    if (!Get_App_Message(subject.computerId, subject.userId, type, text))
        return;
    txtBlkdApplnMsg->Set_Text(text);
    if (type == 0 || type == 1)
        cboApplnWindowType->Set_ListIndex(int(type));
}

// Only the message box follows Remote Mode; the list stays usable, and its click respects the mode.
void frmApplicationSettings::Set_Controls_Enabled() {
    txtBlkdApplnMsg->setEnabled(!Remote_Mode);
}

void frmApplicationSettings::cboApplnWindowType_Click() {
    const bool message = cboApplnWindowType->ListIndex() == 1;
    if (cboApplnWindowType->ListIndex() == 0 || message) {
        lblBlockedApplicationMessage->setVisible(message);
        txtBlkdApplnMsg->setVisible(message);
    }
    if (!Remote_Mode)
        Mark_Changed();
}

void frmApplicationSettings::cmdApply_Click() {
    const QString message = Trim_Blanks(txtBlkdApplnMsg->Text());
    const long type = cboApplnWindowType->ListIndex() == 1 ? 1 : 0;
    const Subject subject = Current_Subject();
    // The text is kept also when no message is to be shown.
    if (Set_App_Message(subject.computerId, subject.userId, type, message))
        Saved(QStringLiteral("Successfully saved the changes"));
}

} // namespace hv
