#include "schedulers/frmApplicationScheduler.h"

#include "store/Bits.h"

namespace hv {

namespace {
const SchedulerDescription kApplicationScheduler{
    .formName = "frmApplicationScheduler",
    .title = "Application Scheduler",
    .rules = Application_Scheduler_Rules(),
    .frame = "fraApplicationScheduler",
    .container = "picAppSchedulerContainer",
    .list = "lvwApplicationScheduler",
    .listIcon = "AppScheduler",
    .imageList = "ilsApplicationScheduler",
    .enableBox = "chkEnableApplicationScheduler",
    .enableCaption = "Enable Application Scheduler",
    .enableBit = FEATURE_APP_SCHEDULER,
    .enableBoxShown = true,
    .toolTips = {.scheduler = "Select the Scheduler type",
                 .from = "Select the 'From' time",
                 .to = "Select the 'To' time",
                 .day = "Select the Days",
                 .months = "Select the Months",
                 .enable = "Click to enable or disable the Application Scheduler"},
    .checkListLeaveEndsEdit = false,
    .removeClearsChecksFirst = false,
    .tagOnlyWhileEditing = true,
    .allowanceRows = 11,
    .modeHalf = false,
};
} // namespace

frmApplicationScheduler::frmApplicationScheduler() : SchedulerPage(kApplicationScheduler) {}

} // namespace hv
