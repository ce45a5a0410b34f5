#pragma once
// The refusals of the users, exception and bypass lists, as their pages and the command-line tool say them.
// The two "already exists" texts differ in one letter's case on purpose: adding and renaming always said
// them so.
#include <QString>

namespace hv {

inline const char* const kUserNameExists = "User Name already exists!";
inline const char* const kRenamedUserExists = "User name already exists!";
inline const char* const kInvalidUserName = "Please enter a valid User Name!";
inline QString Cannot_Delete_User(const QString& name) {
    return QStringLiteral("You cannot delete User Name '") + name + QStringLiteral("'!");
}

inline const char* const kInvalidExe = "Please enter a valid Exe!";
inline const char* const kExeExists = "The Exe already exists in the list!";

} // namespace hv
