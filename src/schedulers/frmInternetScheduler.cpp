#include "schedulers/frmInternetScheduler.h"

#include "store/Bits.h"

namespace hv {

namespace {
const SchedulerDescription kInternetScheduler{
    .formName = "frmInternetScheduler",
    .title = "Internet Scheduler",
    .rules = Internet_Scheduler_Rules(),
    .frame = "fraInternetScheduler",
    .container = "picIScheduleContainer",
    .list = "lvwInternetScheduler",
    .listIcon = "InternetScheduler",
    .imageList = "ilsInternetScheduler",
    .enableBox = "chkEnableInternetScheduler",
    .enableCaption = "Enable Internet Scheduler",
    .enableBit = FEATURE_INTERNET_SCHEDULER,
    .enableBoxShown = false,
    .toolTips = {.scheduler = "Select Internet Scheduler type",
                 .from = "Select 'From' time",
                 .to = "Select 'To' time",
                 .day = "Select the Day",
                 .months = "Select the Month",
                 .enable = "Click to enable or disable Internet Scheduler"},
    .checkListLeaveEndsEdit = true,
    .removeClearsChecksFirst = true,
    .tagOnlyWhileEditing = false,
    .allowanceRows = 17,
    .modeHalf = true,
};
} // namespace

frmInternetScheduler::frmInternetScheduler() : SchedulerPage(kInternetScheduler) {}

} // namespace hv
