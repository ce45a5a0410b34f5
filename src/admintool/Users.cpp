// users and exceptions: the terminal-server users the policy is kept for, and the names exempt from it.
#include "admin/model/AdminWords.h"
#include "admintool/AdminStore.h"
#include "admintool/Cli.h"
#include "store/modCommonFuns.h"
#include "store/modDBFunctions.h"

namespace hv::admin {

namespace {

const QString kNameExists = QLatin1String(kUserNameExists);
const QString kRenameExists = QLatin1String(kRenamedUserExists);
const QString kInvalidName = QLatin1String(kInvalidUserName);

int Users_List(const Invocation&) {
    for (const UserRow& u : Users())
        Out(QString::number(u.id) + u'\t' + u.name);
    return kExitOk;
}

int Users_Add(const Invocation& inv) {
    const QString name = inv.words[0];
    for (const UserRow& u : Users())
        if (Begins_With_Whole_Word(u.name, name))
            throw Refusal{kNameExists};
    if (!Is_Valid_User_Name(name))
        throw Refusal{kInvalidName};
    long id = 0;
    Ensure(Add_User(name, id));
    Out(QString::number(id) + u'\t' + name);
    return kExitOk;
}

int Users_Remove(const Invocation& inv) {
    const std::vector<UserRow> users = Users();
    const UserRow user = Find_User(inv.words[0]);
    // The first row is the policy of all users: it is never deleted.
    if (!users.empty() && users.front().id == user.id)
        throw Refusal{Cannot_Delete_User(user.name)};
    Ensure(Remove_User(0, user.id));
    return kExitOk;
}

int Users_Rename(const Invocation& inv) {
    const std::vector<UserRow> users = Users();
    const UserRow user = Find_User(inv.words[0]);
    const QString name = Trim_Blanks(inv.words[1]);
    if (!users.empty() && users.front().id == user.id)
        throw Refusal{QStringLiteral("The user '%1' cannot be renamed.").arg(user.name)};
    if (!Is_Valid_User_Name(name))
        throw Refusal{kInvalidName};
    if (name == user.name)
        return kExitOk;
    for (const UserRow& u : users)
        if (u.name.toLower() == name.toLower())
            throw Refusal{kRenameExists};
    Ensure(Rename_User(name, user.id));
    return kExitOk;
}

struct ExceptionRow {
    long id;
    QString name;
};

std::vector<ExceptionRow> Exceptions() {
    ResultTable table;
    long rows = 0;
    Ensure(Get_Exception_Users(rows, table));
    std::vector<ExceptionRow> list;
    for (int i = 1; i <= int(rows); ++i)
        list.push_back(ExceptionRow{long(table.Long(i, 1)), table.Text(i, 0)});
    return list;
}

int Exceptions_List(const Invocation&) {
    for (const ExceptionRow& e : Exceptions())
        Out(e.name);
    return kExitOk;
}

int Exceptions_Add(const Invocation& inv) {
    const QString name = Trim_Blanks(inv.words[0]);
    if (!Is_Valid_User_Name(name))
        throw Refusal{kInvalidName};
    if (!Is_New_Exception_User(name))
        throw Refusal{kNameExists};
    long id = 0;
    Ensure(Add_Exception_User(name, id));
    return kExitOk;
}

int Exceptions_Remove(const Invocation& inv) {
    const QString name = Trim_Blanks(inv.words[0]);
    for (const ExceptionRow& e : Exceptions()) {
        if (e.name.compare(name, Qt::CaseInsensitive) == 0) {
            Ensure(Remove_Exception_User(0, e.id));
            return kExitOk;
        }
    }
    throw Refusal{QStringLiteral("'%1' is not in the exception list.").arg(name)};
}

} // namespace

void Add_User_Commands(std::vector<Command>& into) {
    const QString users = QStringLiteral("users");
    const QString exceptions = QStringLiteral("exceptions");
    into.push_back(
        {users,
         QStringLiteral("list"),
         QStringLiteral("users list"),
         QStringLiteral("Lists the terminal-server users, one a line: USER_ID, a tab, the name. The "
                        "first row is the policy of all users."),
         {},
         {},
         0,
         0,
         Users_List});
    into.push_back({users,
                    QStringLiteral("add"),
                    QStringLiteral("users add NAME"),
                    QStringLiteral("Adds a user as the Manage Users page does; the name is taken as typed. A "
                                   "name that a listed one begins with as a whole word is refused."),
                    {},
                    {},
                    1,
                    1,
                    Users_Add});
    into.push_back(
        {users,
         QStringLiteral("remove"),
         QStringLiteral("users remove NAME"),
         QStringLiteral("Removes a user's row. Its rules stay in the store under an id that is never "
                        "given out again. The all-users row cannot be removed."),
         {},
         {},
         1,
         1,
         Users_Remove});
    into.push_back({users,
                    QStringLiteral("rename"),
                    QStringLiteral("users rename NAME NEW-NAME"),
                    QStringLiteral("Renames a user; the new name is trimmed and must not be listed already."),
                    {},
                    {},
                    2,
                    2,
                    Users_Rename});
    into.push_back({exceptions,
                    QStringLiteral("list"),
                    QStringLiteral("exceptions list"),
                    QStringLiteral("Lists the user names exempt from filtering."),
                    {},
                    {},
                    0,
                    0,
                    Exceptions_List});
    into.push_back(
        {exceptions,
         QStringLiteral("add"),
         QStringLiteral("exceptions add NAME"),
         QStringLiteral("Exempts a user name from filtering; the name is trimmed, and a name listed "
                        "in any case is refused."),
         {},
         {},
         1,
         1,
         Exceptions_Add});
    into.push_back({exceptions,
                    QStringLiteral("remove"),
                    QStringLiteral("exceptions remove NAME"),
                    QStringLiteral("Takes a name off the exception list (compared ignoring case)."),
                    {},
                    {},
                    1,
                    1,
                    Exceptions_Remove});
}

} // namespace hv::admin
