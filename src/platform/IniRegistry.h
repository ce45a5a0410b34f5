#pragma once
// The registry stand-in kept in an INI file. Each key is a section named by its full path (backslashes,
// as on Windows); each value a line "name=type:data" with sz (text), dword (decimal) or hex (bytes).
// A list of texts is "multi:" and each text followed by a NUL (written escaped, as %00).
// Keys and value names are found without regard to case, as the registry does; the spelling of the first
// writer is kept. The file is read at every call and written at every change, so a second reader of the
// same file (the scenario driver, a companion program) sees each change at once.
#include "platform/Registry.h"

#include <QString>

namespace hv {

class IniRegistry final : public Registry {
public:
    explicit IniRegistry(const QString& fileName);

    bool Key_Exists(const QString& keyPath) override;
    QStringList Enum_Keys(const QString& keyPath) override;
    std::optional<QString> Get_String(const QString& keyPath, const QString& name) override;
    std::optional<QByteArray> Get_Binary(const QString& keyPath, const QString& name) override;
    bool Set_String(const QString& keyPath, const QString& name, const QString& value) override;
    bool Set_Dword(const QString& keyPath, const QString& name, quint32 value) override;
    bool Set_Binary(const QString& keyPath, const QString& name, const QByteArray& value) override;

    std::optional<quint32> Get_Dword(const QString& keyPath, const QString& name) override;
    bool Set_Multi_String(const QString& keyPath, const QString& name, const QStringList& value) override;
    std::optional<QStringList> Get_Multi_String(const QString& keyPath, const QString& name) override;
    std::optional<QString> Get_Value_Text(const QString& keyPath, const QString& name) override;
    bool Create_Key(const QString& keyPath) override;
    bool Delete_Value(const QString& keyPath, const QString& name) override;
    bool Delete_Key(const QString& keyPath) override;

    QString File_Name() const { return m_fileName; }

private:
    bool Put(const QString& keyPath, const QString& name, const QString& typed);
    std::optional<QString> Typed(const QString& keyPath, const QString& name);
    QString m_fileName;
};

} // namespace hv
