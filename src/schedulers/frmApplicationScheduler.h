#pragma once
// The windows during which the subject may reach the blocked applications and windows, and the switch of
// the Application scheduler. A window is refused when it overlaps another; the check lists stay open when
// the focus leaves them, so the days of an edited row can be changed and saved.
#include "schedulers/frmSchedulerPage.h"

namespace hv {

class frmApplicationScheduler final : public SchedulerPage {
    Q_OBJECT
public:
    frmApplicationScheduler();
};

} // namespace hv
