#include "console/modProgram.h"

#include "console/frmLogin.h"
#include "console/modProviders.h"
#include "core/LogSession.h"
#include "core/clsLog.h"
#include "core/modGlobal.h"
#include "platform/Err.h"
#include "platform/Platform.h"
#include "store/modDB.h"
#include "ui/Forms.h"

namespace hv {

void Main(const QString& commandLine) {
    // The single-instance lock is per user and taken by the test itself; it lasts for the process.
    if (platform().Previous_Instance_Running()) {
        MsgBox(QStringLiteral("A previous instance of the program is running!"), MsgStyle::Exclamation);
        return;
    }

    // The installer switches: nothing but the provider's registration, no log, no store, no window.
    if (commandLine == QLatin1String("-ip")) {
        Install_Providers();
        return;
    }
    if (commandLine == QLatin1String("-up")) {
        Uninstall_Providers();
        return;
    }

    Set_Logger(std::make_unique<clsLog>());
    Start_Log_Session();

    // The first touch of the store: a missing store is reported here and the login form still comes up.
    long mode = 0;
    long port = 0;
    QString server;
    Remote_Mode = false;
    if (Get_Remote_Settings(mode, server, port))
        Remote_Mode = mode != 0;

    ui::Forms::Get<frmLogin>().Show_Modeless();
}

void Run_Main(const QString& commandLine) {
    try {
        Main(commandLine);
    } catch (const RunTimeFailure&) {
        MsgBox(QStringLiteral("Run-time error '%1':\n\n%2").arg(Err().Number).arg(Err().Description),
               MsgStyle::Critical, MsgButtons::OK, QLatin1String(kRunTimeTitle));
        Err().Clear();
        Set_Logger(nullptr);
    }
}

void App_Closing() {
    Log_Event(QStringLiteral("Application Closing"), 1, true);
    Stop_Log_Session();
    Set_Logger(nullptr);
}

void Reset_Process_State() {
    Set_Logger(nullptr);
    Remote_Mode = false;
    Err().Clear();
}

} // namespace hv
