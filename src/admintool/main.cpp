// halvenorts-admin: the console's policy operations from a shell, for administrators who script and for
// farms of terminal servers that share one policy.
#include "admintool/AdminPlatform.h"
#include "admintool/AdminStore.h"
#include "admintool/Cli.h"
#include "core/clsLog.h"
#include "platform/Err.h"

#include <QCoreApplication>
#include <exception>

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    hv::admin::AdminPlatform platform;
    hv::Set_Platform(&platform);

    std::vector<hv::admin::Command> commands;
    hv::admin::Add_User_Commands(commands);
    hv::admin::Add_Rule_Commands(commands);
    hv::admin::Add_Schedule_Commands(commands);
    hv::admin::Add_Report_Commands(commands);
    hv::admin::Add_Policy_Commands(commands);
    hv::admin::Add_Check_Commands(commands);

    QStringList args = QCoreApplication::arguments();
    args.removeFirst();
    int rc = hv::admin::kExitRefused;
    try {
        rc = hv::admin::Run_Command_Line(commands, args);
    } catch (const hv::admin::StoreFailed&) {
    } catch (const hv::RunTimeFailure&) {
        hv::Report_Error();
    } catch (const std::exception& e) {
        hv::admin::Note(QStringLiteral("halvenorts-admin: ") + QString::fromLocal8Bit(e.what()));
    }
    // A store failure that an operation reported without failing the command still fails it.
    if (rc == hv::admin::kExitOk && platform.Failed())
        rc = hv::admin::kExitRefused;
    hv::Set_Platform(nullptr);
    return rc;
}
