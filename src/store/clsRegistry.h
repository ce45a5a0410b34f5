#pragma once
// General registry helpers. Each call opens, uses and closes its key; nothing is kept between calls.
// Keys below HKEY_LOCAL_MACHINE live in the platform's registry stand-in; the other roots have no
// keys here, so every key below them fails to open.
#include <QString>
#include <QVariant>

namespace hv {

// Root handles, as 32-bit values.
inline constexpr long HKEY_CLASSES_ROOT = static_cast<qint32>(0x80000000u);
inline constexpr long HKEY_CURRENT_USER = static_cast<qint32>(0x80000001u);
inline constexpr long HKEY_LOCAL_MACHINE = static_cast<qint32>(0x80000002u);
inline constexpr long HKEY_USERS = static_cast<qint32>(0x80000003u);

// Return codes of the registry calls.
inline constexpr long ERROR_SUCCESS = 0;
inline constexpr long ERROR_FILE_NOT_FOUND = 2;

class clsRegistry final {
public:
    // Creates the key (and the keys above it); true when the call's code is 0 or below.
    bool CreateKey(long lngRootKey, const QString& strRegKeyPath);
    // Deletes the key strRegKeyName below strRegKeyPath. False without an attempt when the path does not
    // open; a key that still has keys below it is refused, as the registry refuses it.
    bool DeleteKey(long lngRootKey, const QString& strRegKeyPath, const QString& strRegKeyName);
    bool RegDeleteKeyValue(long lngRootKey, const QString& strRegKeyPath, const QString& strRegValueName);
    bool RegKeyDoesExist(long lngRootKey, const QString& strRegKeyPath);
    // A text for text values (the terminator dropped; a list of texts keeps a NUL after each of its
    // texts), a number for a double word, and for any other
    // type its bytes as text cut at the first NUL. An empty text when the key does not open (lngError
    // untouched) or the value is missing (lngError holds the code).
    QVariant RegQueryKeyValue(long lngRootKey, const QString& strRegKeyPath, const QString& strRegValueName,
                              long& lngError);
    // The data decides the type: anything that reads as a number (a text of digits too) is written as a
    // double word of its 32-bit value, anything else as a text trimmed of blanks. The key is created when
    // missing.
    bool RegSetKeyValue(long lngRootKey, const QString& strRegKeyPath, const QString& strRegValueName,
                        const QVariant& varRegData);
    bool CanOpenRegKey(long lngRootKey, const QString& strRegKeyPath);
};

} // namespace hv
