#pragma once
// The registry stand-in: keys and values of HKEY_LOCAL_MACHINE kept in an INI file ("registry.ini")
// in the Windows directory. Key paths use backslashes as on Windows.
#include <QByteArray>
#include <QString>
#include <QStringList>
#include <optional>

namespace hv {

class Registry {
public:
    virtual ~Registry() = default;
    virtual bool Key_Exists(const QString& keyPath) = 0;
    virtual QStringList Enum_Keys(const QString& keyPath) = 0;
    virtual std::optional<QString> Get_String(const QString& keyPath, const QString& name) = 0;
    virtual std::optional<QByteArray> Get_Binary(const QString& keyPath, const QString& name) = 0;
    virtual bool Set_String(const QString& keyPath, const QString& name, const QString& value) = 0;
    virtual bool Set_Dword(const QString& keyPath, const QString& name, quint32 value) = 0;
    virtual bool Set_Binary(const QString& keyPath, const QString& name, const QByteArray& value) = 0;
    virtual std::optional<quint32> Get_Dword(const QString& keyPath, const QString& name) = 0;
    // A list of texts (REG_MULTI_SZ).
    virtual bool Set_Multi_String(const QString& keyPath, const QString& name, const QStringList& value) = 0;
    virtual std::optional<QStringList> Get_Multi_String(const QString& keyPath, const QString& name) = 0;
    // Any value as a text: a text as it is, a number in decimal, bytes in hexadecimal pairs, a list of texts
    // with a NUL after each.
    virtual std::optional<QString> Get_Value_Text(const QString& keyPath, const QString& name) = 0;
    virtual bool Create_Key(const QString& keyPath) = 0;
    virtual bool Delete_Value(const QString& keyPath, const QString& name) = 0;
    virtual bool Delete_Key(const QString& keyPath) = 0; // with its sub-keys
};

} // namespace hv
