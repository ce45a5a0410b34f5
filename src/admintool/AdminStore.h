#pragma once
// What the commands ask of the store beyond the console's own operations: users found by name, and a
// failed operation turned into the command's end (the store has already said why on standard error).
#include <QString>
#include <vector>

namespace hv::admin {

// A store operation failed and reported itself: the command ends with exit 1 and adds nothing.
struct StoreFailed {};

inline void Ensure(bool ok) {
    if (!ok)
        throw StoreFailed{};
}

struct UserRow {
    long id = 0;
    QString name;
};

// Every row of USER_TBL in USER_ID order; the first is the policy row of All User Mode.
std::vector<UserRow> Users();
// The user whose name equals `name` ignoring case, as the console looks names up; refused when none.
UserRow Find_User(const QString& name);

} // namespace hv::admin
