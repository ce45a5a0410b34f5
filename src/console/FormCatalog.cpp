#include "console/FormCatalog.h"

#include "console/ConsoleSession.h"
#include "console/frmLogin.h"
#include "ui/Forms.h"
#include "ui/Images.h"

// One line a page. A page that is not listed here cannot be opened by name.
#include "admin/frmCopySettings.h"
#include "admin/frmExceptionList.h"
#include "admin/frmGeneralOptions.h"
#include "admin/frmInternetSettings.h"
#include "admin/frmManageUsers.h"
#include "appcontrol/frmApplicationSettings.h"
#include "appcontrol/frmDeviceSettings.h"
#include "appcontrol/frmEXEBlocker.h"
#include "appcontrol/frmWindowBlocker.h"
#include "console/frmAbout.h"
#include "console/frmMain.h"
#include "filters/frmEmailFilter.h"
#include "filters/frmFileFilter.h"
#include "filters/frmPortFilter.h"
#include "filters/frmWebsiteFilter.h"
#include "schedulers/frmApplicationScheduler.h"
#include "schedulers/frmInternetScheduler.h"
#include "reporting/frmReport.h"
#include "reporting/frmReporting.h"

namespace hv {

namespace {
template <class T> void Add(const char* name) {
    ui::Forms::Register(QLatin1String(name), [] { return static_cast<ui::Form*>(&ui::Forms::Get<T>()); });
}
} // namespace

void Register_All_Forms() {
    // The pages reach the console through its session.
    static ConsoleSession console;
    Set_Session(&console);
    // The pictures the forms are built with must be there before the first form is.
    Init_Console_Images();
    Add<frmLogin>("frmLogin");
    Add<frmMain>("frmMain");
    Add<frmAbout>("frmAbout");
    Add<frmWebsiteFilter>("frmWebsiteFilter");
    Add<frmFileFilter>("frmFileFilter");
    Add<frmEmailFilter>("frmEmailFilter");
    Add<frmPortFilter>("frmPortFilter");
    Add<frmEXEBlocker>("frmEXEBlocker");
    Add<frmWindowBlocker>("frmWindowBlocker");
    Add<frmCopySettings>("frmCopySettings");
    Add<frmInternetScheduler>("frmInternetScheduler");
    Add<frmApplicationScheduler>("frmApplicationScheduler");
    Add<frmApplicationSettings>("frmApplicationSettings");
    Add<frmDeviceSettings>("frmDeviceSettings");
    Add<frmGeneralOptions>("frmGeneralOptions");
    Add<frmInternetSettings>("frmInternetSettings");
    Add<frmManageUsers>("frmManageUsers");
    Add<frmExceptionList>("frmExceptionList");
    Add<frmReporting>("frmReporting");
    Add<frmReport>("frmReport");
}

} // namespace hv
