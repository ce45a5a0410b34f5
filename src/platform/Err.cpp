#include "platform/Err.h"

namespace hv {

ErrObject& Err() {
    static ErrObject record;
    return record;
}

QString ErrObject::Classic_Description(long number) {
    switch (number) {
    case errnum::InvalidProcedureCall:
        return QStringLiteral("Invalid procedure call or argument");
    case errnum::Overflow:
        return QStringLiteral("Overflow");
    case errnum::OutOfMemory:
        return QStringLiteral("Out of memory");
    case errnum::InternalError:
        return QStringLiteral("Internal error");
    case errnum::SubscriptOutOfRange:
        return QStringLiteral("Subscript out of range");
    case errnum::TypeMismatch:
        return QStringLiteral("Type mismatch");
    case errnum::ErrorLoadingDll:
        return QStringLiteral("Error in loading DLL");
    case errnum::BadFileNameOrNumber:
        return QStringLiteral("Bad file name or number");
    case errnum::FileNotFound:
        return QStringLiteral("File not found");
    case errnum::FileAlreadyOpen:
        return QStringLiteral("File already open");
    case errnum::InputPastEndOfFile:
        return QStringLiteral("Input past end of file");
    case errnum::PathFileAccessError:
        return QStringLiteral("Path/File access error");
    case errnum::InvalidUseOfNull:
        return QStringLiteral("Invalid use of Null");
    case errnum::InvalidPropertyValue:
        return QStringLiteral("Invalid property value");
    case errnum::DllEntryPointNotFound:
        return QStringLiteral("Can't find DLL entry point");
    case errnum::IndexOutOfBounds:
        return QStringLiteral("Index out of bounds");
    default:
        return QStringLiteral("Application-defined or object-defined error");
    }
}

void ErrObject::Set(long number, const QString& description, const QString& source) {
    Number = number;
    Description = description.isEmpty() ? Classic_Description(number) : description;
    Source = source.isEmpty() ? kAppTitle : source;
}

void ErrObject::Raise(long number, const QString& description, const QString& source) {
    Set(number, description, source);
    throw RunTimeFailure{};
}

void ErrObject::Clear() {
    Number = 0;
    Description.clear();
    Source.clear();
}

} // namespace hv
