// The registry stand-in: what the provider registration and its health check rely on.
#include "platform/IniRegistry.h"
#include "platform/WinSockCatalog.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

using hv::IniRegistry;

const QString kAppInit = u"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\Windows"_s;

class PlatformRegistry : public ::testing::Test {
protected:
    QTemporaryDir dir;
    QString File() const { return dir.path() + u"/registry.ini"_s; }
};

TEST_F(PlatformRegistry, NamesAreFoundWithoutRegardToCaseAndValuesKeepTheirTypes) {
    IniRegistry reg(File());
    ASSERT_TRUE(reg.Set_String(kAppInit, u"AppInit_DLLs"_s, u"hvsock.dll"_s));
    // The health check reads the value under another spelling than the one it was written with.
    EXPECT_EQ(reg.Get_String(kAppInit.toUpper(), u"AppInit_Dlls"_s), u"hvsock.dll"_s);
    // Writing under another spelling replaces the value instead of adding a second one.
    ASSERT_TRUE(reg.Set_String(kAppInit.toLower(), u"APPINIT_DLLS"_s, QString()));
    EXPECT_EQ(reg.Get_String(kAppInit, u"AppInit_DLLs"_s), QString());

    const QByteArray packed("\x00\x01hvsock.dll\xff\r\n=%", 17);
    ASSERT_TRUE(reg.Set_Binary(u"A\\B"_s, u"PackedCatalogItem"_s, packed));
    ASSERT_TRUE(reg.Set_Dword(u"A\\B"_s, u"LoadAppInit_DLLs"_s, 4294967295u));
    EXPECT_EQ(reg.Get_Binary(u"A\\B"_s, u"PackedCatalogItem"_s), packed);
    EXPECT_EQ(reg.Get_Dword(u"A\\B"_s, u"LoadAppInit_DLLs"_s), 4294967295u);
    const QStringList texts{u"a b"_s, u"c%00d"_s};
    ASSERT_TRUE(reg.Set_Multi_String(u"A\\B"_s, u"List"_s, texts));
    EXPECT_EQ(IniRegistry(File()).Get_Multi_String(u"a\\b"_s, u"list"_s), texts);
    EXPECT_EQ(reg.Get_Value_Text(u"A\\B"_s, u"List"_s), QString::fromUtf16(u"a b\0c%00d\0", 10));
    QFile file(File());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_FALSE(file.readAll().contains(char(0))); // a NUL is written escaped
    // A value read as another type is not there, as the registry's typed reads answer.
    EXPECT_FALSE(reg.Get_String(u"A\\B"_s, u"LoadAppInit_DLLs"_s).has_value());
}

TEST_F(PlatformRegistry, TextsThatWouldBreakTheFileComeBackWholeToAnotherReader) {
    const struct {
        const char* key;
        const char* name;
        const char* value;
    } cases[] = {
        {"K\\With]Bracket", "plain", "a=b"},
        {"K\\Percent", "na=me", "100% %41 sure"},
        {"K\\Lines", "multi", "one\r\ntwo\nthree"},
        {"K\\Semicolon", ";comment", "[section]"},
    };
    IniRegistry console(File());
    IniRegistry companion(File()); // made before the writes: it must not serve a stale copy
    for (const auto& c : cases)
        ASSERT_TRUE(
            console.Set_String(QLatin1String(c.key), QLatin1String(c.name), QString::fromUtf8(c.value)));
    for (const auto& c : cases)
        EXPECT_EQ(companion.Get_String(QLatin1String(c.key), QLatin1String(c.name)),
                  QString::fromUtf8(c.value))
            << c.key;
}

TEST_F(PlatformRegistry, KeysAreMadeWithTheirParentsAndListedOneLevelDown) {
    IniRegistry reg(dir.path() + u"/sub/folder/registry.ini"_s); // a missing file is empty
    EXPECT_TRUE(reg.Enum_Keys(QString()).isEmpty());
    const QString catalog = QStringLiteral(
        "SYSTEM\\CurrentControlSet\\services\\WinSock2\\Parameters\\Protocol_Catalog9\\Catalog_Entries");
    ASSERT_TRUE(reg.Set_Binary(catalog + u"\\000000000001"_s, u"PackedCatalogItem"_s, "x"));
    ASSERT_TRUE(reg.Create_Key(catalog + u"\\000000000002\\Deeper"_s));
    EXPECT_TRUE(QFile::exists(reg.File_Name()));
    EXPECT_TRUE(reg.Key_Exists(u"SYSTEM\\CurrentControlSet"_s));
    EXPECT_EQ(reg.Enum_Keys(catalog), (QStringList{u"000000000001"_s, u"000000000002"_s}));
    // The 64-bit catalogue is another key, not a prefix match of the 32-bit one.
    EXPECT_FALSE(reg.Key_Exists(catalog + u"64"_s));

    EXPECT_TRUE(reg.Delete_Key(catalog + u"\\000000000002"_s));
    EXPECT_FALSE(reg.Key_Exists(catalog + u"\\000000000002\\Deeper"_s));
    EXPECT_EQ(reg.Enum_Keys(catalog), QStringList{u"000000000001"_s});
    EXPECT_TRUE(reg.Delete_Value(catalog + u"\\000000000001"_s, u"packedcatalogitem"_s));
    EXPECT_FALSE(reg.Delete_Value(catalog + u"\\000000000001"_s, u"PackedCatalogItem"_s));
}

} // namespace

namespace {

TEST(PlatformCatalog, TheProviderHasOneEntryBesideTheOthers) {
    QTemporaryDir dir;
    hv::IniRegistry reg(dir.path() + u"/registry.ini"_s);
    const QString catalog = hv::Catalog_Key(false);
    EXPECT_EQ(hv::Catalog_Key(true), catalog + u"64"_s);
    const QString other = catalog + u"\\000000000005"_s;
    ASSERT_TRUE(reg.Set_Binary(other, u"PackedCatalogItem"_s, "%SystemRoot%\\system32\\mswsock.dll"));

    // A second install does not add a second entry; the new one is numbered after the highest.
    hv::Add_Provider_Entry(reg, catalog);
    hv::Add_Provider_Entry(reg, catalog);
    EXPECT_EQ(reg.Enum_Keys(catalog), (QStringList{u"000000000005"_s, u"000000000006"_s}));
    EXPECT_TRUE(hv::Entry_Names_Provider(reg, catalog + u"\\000000000006"_s));
    EXPECT_FALSE(hv::Entry_Names_Provider(reg, other));
    EXPECT_FALSE(reg.Key_Exists(hv::Catalog_Key(true)));

    // Removing takes every entry that names the library, in any case, and leaves the others.
    ASSERT_TRUE(
        reg.Set_String(catalog + u"\\000000000009"_s, u"PackedCatalogItem"_s, u"C:\\WINDOWS\\HVSOCK.DLL"_s));
    hv::Remove_Provider_Entries(reg, catalog);
    EXPECT_EQ(reg.Enum_Keys(catalog), QStringList{u"000000000005"_s});
}

} // namespace
