#include "schedulers/frmApplicationScheduler.h"

#include "store/Bits.h"

namespace hv {

namespace {
const SchedulerDescription kApplicationScheduler{
    .formName = "frmApplicationScheduler",
    .title = "Application Scheduler",
    .family = SCH_FOR_APPLICATION,
    .subType = 1,
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
    .conflicts = Schedule_Overlaps,
    .conflictMessage = "Schedule cannot be overlapped!",
    .toMessage = "'To' time should be greater than or equal to 'From' time!",
    .checkListLeaveEndsEdit = false,
    .removeClearsChecksFirst = false,
    .tagOnlyWhileEditing = true,
    .allowanceRows = 11,
    .modeHalf = false,
};
} // namespace

frmApplicationScheduler::frmApplicationScheduler() : SchedulerPage(kApplicationScheduler) {}

} // namespace hv
