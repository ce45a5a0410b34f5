// The registry stand-in: what the provider registration and its health check rely on.
#include "platform/IniRegistry.h"
#include "platform/WinSockCatalog.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

using hv::IniRegistry;

const QString kAppInit = QStringLiteral("SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\Windows");

class PlatformRegistry : public ::testing::Test {
protected:
    QTemporaryDir dir;
    QString File() const { return dir.path() + QStringLiteral("/registry.ini"); }
};

TEST_F(PlatformRegistry, NamesAreFoundWithoutRegardToCaseAndValuesKeepTheirTypes) {
    IniRegistry reg(File());
    ASSERT_TRUE(reg.Set_String(kAppInit, QStringLiteral("AppInit_DLLs"), QStringLiteral("hvsock.dll")));
    // The health check reads the value under another spelling than the one it was written with.
    EXPECT_EQ(reg.Get_String(kAppInit.toUpper(), QStringLiteral("AppInit_Dlls")),
              QStringLiteral("hvsock.dll"));
    // Writing under another spelling replaces the value instead of adding a second one.
    ASSERT_TRUE(reg.Set_String(kAppInit.toLower(), QStringLiteral("APPINIT_DLLS"), QString()));
    EXPECT_EQ(reg.Get_String(kAppInit, QStringLiteral("AppInit_DLLs")), QString());

    const QByteArray packed("\x00\x01hvsock.dll\xff\r\n=%", 17);
    ASSERT_TRUE(reg.Set_Binary(QStringLiteral("A\\B"), QStringLiteral("PackedCatalogItem"), packed));
    ASSERT_TRUE(reg.Set_Dword(QStringLiteral("A\\B"), QStringLiteral("LoadAppInit_DLLs"), 4294967295u));
    EXPECT_EQ(reg.Get_Binary(QStringLiteral("A\\B"), QStringLiteral("PackedCatalogItem")), packed);
    EXPECT_EQ(reg.Get_Dword(QStringLiteral("A\\B"), QStringLiteral("LoadAppInit_DLLs")), 4294967295u);
    const QStringList texts{QStringLiteral("a b"), QStringLiteral("c%00d")};
    ASSERT_TRUE(reg.Set_Multi_String(QStringLiteral("A\\B"), QStringLiteral("List"), texts));
    EXPECT_EQ(IniRegistry(File()).Get_Multi_String(QStringLiteral("a\\b"), QStringLiteral("list")), texts);
    EXPECT_EQ(reg.Get_Value_Text(QStringLiteral("A\\B"), QStringLiteral("List")),
              QString::fromUtf16(u"a b\0c%00d\0", 10));
    QFile file(File());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_FALSE(file.readAll().contains(char(0))); // a NUL is written escaped
    // A value read as another type is not there, as the registry's typed reads answer.
    EXPECT_FALSE(reg.Get_String(QStringLiteral("A\\B"), QStringLiteral("LoadAppInit_DLLs")).has_value());
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
    IniRegistry reg(dir.path() + QStringLiteral("/sub/folder/registry.ini")); // a missing file is empty
    EXPECT_TRUE(reg.Enum_Keys(QString()).isEmpty());
    const QString catalog = QStringLiteral(
        "SYSTEM\\CurrentControlSet\\services\\WinSock2\\Parameters\\Protocol_Catalog9\\Catalog_Entries");
    ASSERT_TRUE(
        reg.Set_Binary(catalog + QStringLiteral("\\000000000001"), QStringLiteral("PackedCatalogItem"), "x"));
    ASSERT_TRUE(reg.Create_Key(catalog + QStringLiteral("\\000000000002\\Deeper")));
    EXPECT_TRUE(QFile::exists(reg.File_Name()));
    EXPECT_TRUE(reg.Key_Exists(QStringLiteral("SYSTEM\\CurrentControlSet")));
    EXPECT_EQ(reg.Enum_Keys(catalog),
              (QStringList{QStringLiteral("000000000001"), QStringLiteral("000000000002")}));
    // The 64-bit catalogue is another key, not a prefix match of the 32-bit one.
    EXPECT_FALSE(reg.Key_Exists(catalog + QStringLiteral("64")));

    EXPECT_TRUE(reg.Delete_Key(catalog + QStringLiteral("\\000000000002")));
    EXPECT_FALSE(reg.Key_Exists(catalog + QStringLiteral("\\000000000002\\Deeper")));
    EXPECT_EQ(reg.Enum_Keys(catalog), QStringList{QStringLiteral("000000000001")});
    EXPECT_TRUE(
        reg.Delete_Value(catalog + QStringLiteral("\\000000000001"), QStringLiteral("packedcatalogitem")));
    EXPECT_FALSE(
        reg.Delete_Value(catalog + QStringLiteral("\\000000000001"), QStringLiteral("PackedCatalogItem")));
}

} // namespace

namespace {

TEST(PlatformCatalog, TheProviderHasOneEntryBesideTheOthers) {
    QTemporaryDir dir;
    hv::IniRegistry reg(dir.path() + QStringLiteral("/registry.ini"));
    const QString catalog = hv::Catalog_Key(false);
    EXPECT_EQ(hv::Catalog_Key(true), catalog + QStringLiteral("64"));
    const QString other = catalog + QStringLiteral("\\000000000005");
    ASSERT_TRUE(
        reg.Set_Binary(other, QStringLiteral("PackedCatalogItem"), "%SystemRoot%\\system32\\mswsock.dll"));

    // A second install does not add a second entry; the new one is numbered after the highest.
    hv::Add_Provider_Entry(reg, catalog);
    hv::Add_Provider_Entry(reg, catalog);
    EXPECT_EQ(reg.Enum_Keys(catalog),
              (QStringList{QStringLiteral("000000000005"), QStringLiteral("000000000006")}));
    EXPECT_TRUE(hv::Entry_Names_Provider(reg, catalog + QStringLiteral("\\000000000006")));
    EXPECT_FALSE(hv::Entry_Names_Provider(reg, other));
    EXPECT_FALSE(reg.Key_Exists(hv::Catalog_Key(true)));

    // Removing takes every entry that names the library, in any case, and leaves the others.
    ASSERT_TRUE(reg.Set_String(catalog + QStringLiteral("\\000000000009"),
                               QStringLiteral("PackedCatalogItem"),
                               QStringLiteral("C:\\WINDOWS\\HVSOCK.DLL")));
    hv::Remove_Provider_Entries(reg, catalog);
    EXPECT_EQ(reg.Enum_Keys(catalog), QStringList{QStringLiteral("000000000005")});
}

} // namespace
