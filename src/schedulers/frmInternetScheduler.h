#pragma once
// The subject's internet mode (ON, OFF or by schedule, saved by Apply) and its internet windows (saved at
// each Add, Save and Remove). A window is refused only as an exact duplicate; leaving a check list ends
// edit mode.
#include "schedulers/frmSchedulerPage.h"

namespace hv {

class frmInternetScheduler final : public SchedulerPage {
    Q_OBJECT
public:
    frmInternetScheduler();
};

} // namespace hv
