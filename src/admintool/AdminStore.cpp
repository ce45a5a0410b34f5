#include "admintool/AdminStore.h"

#include "admintool/Cli.h"
#include "store/modDBFunctions.h"

namespace hv::admin {

std::vector<UserRow> Users() {
    ResultTable table;
    long rows = 0;
    Ensure(Get_Users(rows, table));
    std::vector<UserRow> users;
    users.reserve(size_t(rows));
    for (int i = 1; i <= int(rows); ++i)
        users.push_back(UserRow{long(table.Long(i, 1)), table.Text(i, 0)});
    return users;
}

UserRow Find_User(const QString& name) {
    for (const UserRow& u : Users())
        if (u.name.compare(name, Qt::CaseInsensitive) == 0)
            return u;
    throw Refusal{QStringLiteral("There is no user named '%1'.").arg(name)};
}

} // namespace hv::admin
