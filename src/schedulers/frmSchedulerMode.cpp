// The Internet scheduler's mode half: ON, OFF or the scheduler, saved only by Apply, with Apply enabled as
// the mark of a change not saved yet.
#include "core/clsLog.h"
#include "platform/Platform.h"
#include "schedulers/frmSchedulerPage.h"
#include "store/Bits.h"
#include "store/modDBFunctions.h"
#include "ui/Session.h"

#include <QVBoxLayout>

namespace hv {

void SchedulerPage::Build_Mode_Half(QBoxLayout* layout) {
    auto* fraInternetMode = new QGroupBox(QStringLiteral("Internet Mode"), this);
    fraInternetMode->setObjectName(QStringLiteral("fraInternetMode"));
    auto* frameLayout = new QVBoxLayout(fraInternetMode);
    auto* picIModeContainer = new QWidget(fraInternetMode);
    picIModeContainer->setObjectName(QStringLiteral("picIModeContainer"));
    frameLayout->addWidget(picIModeContainer);
    auto* row = new QHBoxLayout(picIModeContainer);
    const char* captions[] = {"Turn Internet ON", "Turn Internet OFF", "Enable Internet Scheduler"};
    for (int i = 0; i < 3; ++i) {
        picInternetMode[size_t(i)] =
            new ui::Label(ui::Array_Name(QStringLiteral("picInternetMode"), i), QString(), picIModeContainer);
        optInternetMode[size_t(i)] =
            new ui::OptionButton(ui::Array_Name(QStringLiteral("optInternetMode"), i),
                                 QLatin1String(captions[i]), picIModeContainer);
        row->addWidget(picInternetMode[size_t(i)]);
        row->addWidget(optInternetMode[size_t(i)]);
        connect(optInternetMode[size_t(i)], &ui::OptionButton::Click, this,
                [this] { cmdApply->setEnabled(true); });
    }
    row->addStretch(1);
    layout->addWidget(fraInternetMode);
    cmdApply = new ui::CommandButton(QStringLiteral("cmdApply"), QStringLiteral("Apply"), this);
    connect(cmdApply, &ui::CommandButton::Click, this, [this] { Guarded([this] { cmdApply_Click(); }); });
}

void SchedulerPage::Load_Internet_Mode() {
    const Subject subject = Current_Subject();
    long mode = 0;
    Get_Schedule_For(subject.computerId, subject.userId, mode);
    Set_Controls_Enabled();
    if (mode == INTERNET_MODE_MANUAL) {
        long on = 0;
        Get_Internet_On_Off(subject.computerId, subject.userId, on);
        optInternetMode[on != 0 ? 0 : 1]->Set_Value(true);
    } else if (mode == INTERNET_MODE_SCHEDULER) {
        if (Is_Feature_Bit_Set(subject.computerId, subject.userId, FEATURE_INTERNET_SCHEDULER))
            optInternetMode[2]->Set_Value(true);
    }
    // Last: choosing an option above enables Apply, and so does enabling the controls.
    cmdApply->setEnabled(false);
}

// ---- the mode half

void SchedulerPage::cmdApply_Click() {
    const Subject subject = Current_Subject();
    const long C = subject.computerId;
    const long U = subject.userId;
    if (!optInternetMode[2]->Value()) {
        Set_Feature_Bit(false, FEATURE_INTERNET_SCHEDULER, C, U);
        if (optInternetMode[0]->Value()) {
            Set_Internet_On_Off(1, C, U);
            Set_Status_Bit(false, STATUS_INTERNET_ON_OFF, C, U);
        } else if (optInternetMode[1]->Value()) {
            Set_Internet_On_Off(0, C, U);
            Set_Status_Bit(true, STATUS_INTERNET_ON_OFF, C, U);
        }
    } else {
        Set_Schedule_For(INTERNET_MODE_SCHEDULER, C, U);
        Set_Feature_Bit(true, FEATURE_INTERNET_SCHEDULER, C, U);
    }
    cmdApply->setEnabled(false);
    session().Get_Internet_Mode();
}

void SchedulerPage::Form_QueryUnload(int& Cancel, int UnloadMode) {
    (void)UnloadMode;
    if (!cmdApply || !cmdApply->isEnabled())
        return;
    if (MsgBox(QStringLiteral("Are you sure you want to close without saving the changes?"),
               MsgStyle::Question, MsgButtons::YesNo) == MsgAnswer::No)
        Cancel = 1;
}

} // namespace hv
