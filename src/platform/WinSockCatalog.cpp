#include "platform/WinSockCatalog.h"

#include "platform/Registry.h"

#include <algorithm>

namespace hv {

namespace {

constexpr int kMaxPath = 260;
constexpr int kEntryNameDigits = 12;
const char* const kPackedItem = "PackedCatalogItem";

QString Entry_Key(const QString& catalogKey, const QString& entry) {
    return catalogKey + u'\\' + entry;
}

QByteArray Packed_Item(Registry& reg, const QString& entryKey) {
    if (const auto bytes = reg.Get_Binary(entryKey, QLatin1String(kPackedItem)))
        return *bytes;
    if (const auto text = reg.Get_String(entryKey, QLatin1String(kPackedItem)))
        return text->toLatin1();
    return {};
}

} // namespace

QString Catalog_Key(bool wide64) {
    QString key = QStringLiteral(
        "SYSTEM\\CurrentControlSet\\services\\WinSock2\\Parameters\\Protocol_Catalog9\\Catalog_Entries");
    if (wide64)
        key += QStringLiteral("64");
    return key;
}

QByteArray Provider_Catalog_Item() {
    QByteArray item = QByteArrayLiteral("%SystemRoot%\\system32\\") + kProviderLibraryName;
    item = item.leftJustified(kMaxPath, '\0');
    const QString description = QStringLiteral("HalvenorTS Filter over [MSAFD Tcpip [TCP/IP]]");
    item.append(reinterpret_cast<const char*>(description.utf16()), description.size() * 2);
    item.append(2, '\0');
    return item;
}

bool Entry_Names_Provider(Registry& reg, const QString& entryKey) {
    const QByteArray item = Packed_Item(reg, entryKey);
    return QString::fromLatin1(item).contains(QLatin1String(kProviderLibraryName), Qt::CaseInsensitive);
}

void Add_Provider_Entry(Registry& reg, const QString& catalogKey) {
    qulonglong last = 0;
    for (const QString& entry : reg.Enum_Keys(catalogKey)) {
        if (Entry_Names_Provider(reg, Entry_Key(catalogKey, entry)))
            return;
        last = std::max(last, entry.toULongLong());
    }
    const QString entry = QStringLiteral("%1").arg(last + 1, kEntryNameDigits, 10, QLatin1Char('0'));
    reg.Set_Binary(Entry_Key(catalogKey, entry), QLatin1String(kPackedItem), Provider_Catalog_Item());
}

void Remove_Provider_Entries(Registry& reg, const QString& catalogKey) {
    for (const QString& entry : reg.Enum_Keys(catalogKey))
        if (Entry_Names_Provider(reg, Entry_Key(catalogKey, entry)))
            reg.Delete_Key(Entry_Key(catalogKey, entry));
}

} // namespace hv
