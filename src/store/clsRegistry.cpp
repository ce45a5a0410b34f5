#include "store/clsRegistry.h"

#include "platform/Platform.h"
#include "platform/Registry.h"
#include "store/modCommonFuns.h"

#include <QRegularExpression>

#include <cmath>
#include <optional>

namespace hv {

namespace {

// The hive that holds keys below this root, or null: only HKEY_LOCAL_MACHINE has a stand-in.
Registry* Hive(long lngRootKey) {
    if (lngRootKey != HKEY_LOCAL_MACHINE)
        return nullptr;
    return &platform().Registry_Root();
}

// Opening a key: the root itself always opens; a path below it opens when the key is there.
bool Opens(long lngRootKey, const QString& strRegKeyPath) {
    Registry* hive = Hive(lngRootKey);
    if (!hive)
        return false;
    QString path = strRegKeyPath;
    while (path.startsWith(u'\\'))
        path.remove(0, 1);
    return path.isEmpty() || hive->Key_Exists(path);
}

QString Join(const QString& path, const QString& name) {
    if (path.isEmpty())
        return name;
    return path.endsWith(u'\\') ? path + name : path + u'\\' + name;
}

// How data reads when it is to be written: as a number that fits in a double word, as a number that
// does not, or as a text. A fraction rounds half to even.
struct Reading {
    enum Kind { Text, Number, TooLarge } kind = Text;
    qint32 value = 0;
};

Reading From_Double(double value) {
    const double rounded = std::nearbyint(value);
    if (!(rounded >= -2147483648.0 && rounded <= 2147483647.0))
        return {Reading::TooLarge, 0};
    return {Reading::Number, qint32(rounded)};
}

Reading Read_Data(const QVariant& data) {
    switch (data.typeId()) {
    case QMetaType::UnknownType: // no data at all counts as the number 0
        return {Reading::Number, 0};
    case QMetaType::Bool:
        return {Reading::Number, data.toBool() ? -1 : 0};
    case QMetaType::QString:
    case QMetaType::QByteArray: {
        const QString text = data.toString();
        // "&H1F" and "&O17" read as numbers, as in the program's own number texts.
        static const QRegularExpression radix(QStringLiteral("^ *&([hHoO])([0-9a-fA-F]+) *$"));
        if (const auto m = radix.match(text); m.hasMatch()) {
            bool ok = false;
            const bool hex = m.captured(1).compare(QLatin1String("h"), Qt::CaseInsensitive) == 0;
            const qulonglong v = m.captured(2).toULongLong(&ok, hex ? 16 : 8);
            if (!ok)
                return {Reading::Text, 0};
            if (v > 0xFFFFFFFFull)
                return {Reading::TooLarge, 0};
            return {Reading::Number, static_cast<qint32>(quint32(v))};
        }
        static const QRegularExpression decimal(
            QStringLiteral("^\\s*[+-]?(\\d+\\.?\\d*|\\.\\d+)([eE][+-]?\\d+)?\\s*$"));
        if (!decimal.match(text).hasMatch())
            return {Reading::Text, 0};
        return From_Double(text.trimmed().toDouble());
    }
    default: {
        bool ok = false;
        const double value = data.toDouble(&ok);
        return ok ? From_Double(value) : Reading{Reading::Text, 0};
    }
    }
}

} // namespace

bool clsRegistry::CreateKey(long lngRootKey, const QString& strRegKeyPath) {
    Registry* hive = Hive(lngRootKey);
    return hive && hive->Create_Key(strRegKeyPath);
}

bool clsRegistry::DeleteKey(long lngRootKey, const QString& strRegKeyPath, const QString& strRegKeyName) {
    if (!RegKeyDoesExist(lngRootKey, strRegKeyPath) || strRegKeyName.isEmpty())
        return false;
    Registry* hive = Hive(lngRootKey);
    const QString key = Join(strRegKeyPath, strRegKeyName);
    // A key with keys below it is not deleted (access denied), so a whole tree never goes by mistake.
    if (!hive->Enum_Keys(key).isEmpty())
        return false;
    return hive->Delete_Key(key);
}

bool clsRegistry::RegDeleteKeyValue(long lngRootKey, const QString& strRegKeyPath,
                                    const QString& strRegValueName) {
    if (!RegKeyDoesExist(lngRootKey, strRegKeyPath))
        return false;
    return Hive(lngRootKey)->Delete_Value(strRegKeyPath, strRegValueName);
}

bool clsRegistry::RegKeyDoesExist(long lngRootKey, const QString& strRegKeyPath) {
    return Opens(lngRootKey, strRegKeyPath);
}

QVariant clsRegistry::RegQueryKeyValue(long lngRootKey, const QString& strRegKeyPath,
                                       const QString& strRegValueName, long& lngError) {
    if (!Opens(lngRootKey, strRegKeyPath))
        return QString();
    Registry* hive = Hive(lngRootKey);
    if (const auto text = hive->Get_String(strRegKeyPath, strRegValueName)) {
        lngError = ERROR_SUCCESS;
        return *text;
    }
    if (const auto dword = hive->Get_Dword(strRegKeyPath, strRegValueName)) {
        lngError = ERROR_SUCCESS;
        return QVariant(qlonglong(static_cast<qint32>(*dword)));
    }
    if (const auto list = hive->Get_Multi_String(strRegKeyPath, strRegValueName)) {
        // The data ends in an empty text's NUL after the last text's; only that final terminator goes.
        lngError = ERROR_SUCCESS;
        QString texts;
        for (const QString& item : *list)
            texts += item + QChar(0);
        return texts;
    }
    if (const auto bytes = hive->Get_Binary(strRegKeyPath, strRegValueName)) {
        lngError = ERROR_SUCCESS;
        const qsizetype nul = bytes->indexOf('\0');
        const QByteArray kept = nul < 0 ? *bytes : bytes->left(nul);
        return QString::fromLatin1(kept.constData(), kept.size());
    }
    lngError = ERROR_FILE_NOT_FOUND;
    return QString();
}

bool clsRegistry::RegSetKeyValue(long lngRootKey, const QString& strRegKeyPath,
                                 const QString& strRegValueName, const QVariant& varRegData) {
    Registry* hive = Hive(lngRootKey);
    if (!hive)
        return false;
    const Reading reading = Read_Data(varRegData);
    switch (reading.kind) {
    case Reading::Number:
        return hive->Set_Dword(strRegKeyPath, strRegValueName, static_cast<quint32>(reading.value));
    case Reading::TooLarge:
        return false; // a number beyond 32 bits has no double word to go into
    case Reading::Text:
        break;
    }
    return hive->Set_String(strRegKeyPath, strRegValueName, Trim_Blanks(varRegData.toString()));
}

bool clsRegistry::CanOpenRegKey(long lngRootKey, const QString& strRegKeyPath) {
    return Opens(lngRootKey, strRegKeyPath);
}

} // namespace hv
