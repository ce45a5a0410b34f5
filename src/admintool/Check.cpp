// check: whether a store is one the console can use, in plain words.
#include "admintool/Cli.h"
#include "setup/StoreSetup.h"
#include "store/modDB.h"

namespace hv::admin {

namespace {

int Check(const Invocation&) {
    const QString path = Get_Db_Path();
    const QStringList problems = Check_Store(path);
    for (const QString& p : problems)
        Out(p);
    if (!problems.isEmpty())
        return kExitRefused;
    Out(QStringLiteral("%1: the store is complete and its integrity check passed.").arg(path));
    return kExitOk;
}

} // namespace

void Add_Check_Commands(std::vector<Command>& into) {
    into.push_back(
        {QStringLiteral("check"),
         QString(),
         QStringLiteral("check"),
         QStringLiteral("Opens the store read-only and reports missing tables, columns and key rows, "
                        "and what SQLite's integrity check finds. Exit 1 when anything is wrong."),
         {},
         {},
         0,
         0,
         Check});
}

} // namespace hv::admin
