// The general registry and text file helpers, on the registry stand-in and scratch files.
#include "platform/IniRegistry.h"
#include "store/clsFile.h"
#include "store/clsRegistry.h"
#include "testing/ScriptedPlatform.h"
#include "testing/TestSupport.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

namespace hv {
namespace {

class StoreHelpers : public ::testing::Test {
protected:
    void TearDown() override { Err().Clear(); }
    IniRegistry& Hive() { return static_cast<IniRegistry&>(p.Registry_Root()); }
    QVariant Query(long root, const QString& path, const char* name, long& error) {
        return reg.RegQueryKeyValue(root, path, QString::fromLatin1(name), error);
    }
    QString Path(const char* name) { return QDir(p.App_Path()).filePath(QString::fromLatin1(name)); }
    ScriptedPlatform p;
    PlatformScope scope{p};
    clsRegistry reg;
    clsFile file;
    const QString key = QStringLiteral("SOFTWARE\\Halvenor\\Console");
};

TEST_F(StoreHelpers, RegistryDataDecidesTheStoredType) {
    struct Case {
        const char* name;
        QVariant data;
        std::optional<quint32> dword; // what a double word holds; none: a text is stored
        const char* text;             // the text stored; neither this nor a double word: refused
    };
    const Case cases[] = {
        {"blanks round digits", QStringLiteral("  42 "), 42u, nullptr},
        {"negative", QStringLiteral("-1"), 0xFFFFFFFFu, nullptr},
        {"fraction to even", QStringLiteral("2.5"), 2u, nullptr},
        {"hex", QStringLiteral("&H10"), 16u, nullptr},
        {"number", QVariant(qint64(7)), 7u, nullptr},
        {"too large", QStringLiteral("99999999999"), std::nullopt, nullptr},
        {"text trimmed", QStringLiteral("  host name "), std::nullopt, "host name"},
        {"tabs kept", QStringLiteral("\tx\t"), std::nullopt, "\tx\t"},
        {"empty text", QString(), std::nullopt, ""},
        {"digits and letters", QStringLiteral("12ab"), std::nullopt, "12ab"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const QString name = QString::fromLatin1(c.name);
        EXPECT_EQ(reg.RegSetKeyValue(HKEY_LOCAL_MACHINE, key, name, c.data), c.dword || c.text);
        EXPECT_EQ(Hive().Get_Dword(key, name), c.dword);
        EXPECT_EQ(Hive().Get_String(key, name),
                  c.text ? std::optional<QString>(QString::fromLatin1(c.text)) : std::nullopt);
    }

    // Reading back by type; a missing value sets the code, a key that does not open leaves it as it was.
    Hive().Set_Binary(key, QStringLiteral("Bytes"), QByteArray("ab\0cd", 5));
    Hive().Set_Multi_String(key, QStringLiteral("Texts"), {QStringLiteral("one"), QStringLiteral("two")});
    Hive().Set_Multi_String(key, QStringLiteral("No texts"), {});
    ASSERT_TRUE(reg.RegDeleteKeyValue(HKEY_LOCAL_MACHINE, key, QStringLiteral("empty text")));
    long error = 99;
    EXPECT_EQ(Query(HKEY_LOCAL_MACHINE, key, "text trimmed", error), QVariant(QStringLiteral("host name")));
    EXPECT_EQ(Query(HKEY_LOCAL_MACHINE, key, "negative", error).toLongLong(), -1);
    EXPECT_EQ(Query(HKEY_LOCAL_MACHINE, key, "Bytes", error), QVariant(QStringLiteral("ab")));
    EXPECT_EQ(Query(HKEY_LOCAL_MACHINE, key, "Texts", error), QVariant(QString::fromUtf16(u"one\0two\0", 8)));
    EXPECT_EQ(Query(HKEY_LOCAL_MACHINE, key, "No texts", error), QVariant(QString()));
    EXPECT_EQ(Query(HKEY_LOCAL_MACHINE, key, "empty text", error), QVariant(QString()));
    EXPECT_EQ(error, ERROR_FILE_NOT_FOUND);
    error = 99;
    EXPECT_EQ(Query(HKEY_CURRENT_USER, key, "negative", error), QVariant(QString()));
    EXPECT_EQ(error, 99);
}

TEST_F(StoreHelpers, RegistryKeysAreMadeTestedAndDeletedOneAtATime) {
    const QString parent = QStringLiteral("SOFTWARE\\Halvenor");
    EXPECT_FALSE(reg.RegKeyDoesExist(HKEY_LOCAL_MACHINE, key));
    // Deleting below a path that does not open is refused before any attempt.
    EXPECT_FALSE(reg.DeleteKey(HKEY_LOCAL_MACHINE, key, QStringLiteral("Sub")));
    EXPECT_FALSE(reg.RegDeleteKeyValue(HKEY_LOCAL_MACHINE, key, QStringLiteral("Value")));
    ASSERT_TRUE(reg.CreateKey(HKEY_LOCAL_MACHINE, key + QStringLiteral("\\Sub")));
    EXPECT_TRUE(reg.RegKeyDoesExist(HKEY_LOCAL_MACHINE, key));
    EXPECT_TRUE(reg.CanOpenRegKey(HKEY_LOCAL_MACHINE, parent));
    EXPECT_TRUE(reg.CanOpenRegKey(HKEY_LOCAL_MACHINE, QString()));
    EXPECT_FALSE(reg.CanOpenRegKey(HKEY_CURRENT_USER, QString()));
    EXPECT_FALSE(reg.CreateKey(HKEY_CURRENT_USER, key));
    // A key with keys below it stays; the lowest goes, then its parent can.
    EXPECT_FALSE(reg.DeleteKey(HKEY_LOCAL_MACHINE, parent, QStringLiteral("Console")));
    EXPECT_FALSE(reg.DeleteKey(HKEY_LOCAL_MACHINE, key, QStringLiteral("Missing")));
    EXPECT_TRUE(reg.DeleteKey(HKEY_LOCAL_MACHINE, key, QStringLiteral("Sub")));
    EXPECT_TRUE(reg.DeleteKey(HKEY_LOCAL_MACHINE, parent, QStringLiteral("Console")));
    EXPECT_FALSE(reg.RegKeyDoesExist(HKEY_LOCAL_MACHINE, key));
    EXPECT_TRUE(reg.RegKeyDoesExist(HKEY_LOCAL_MACHINE, parent));
}

TEST_F(StoreHelpers, FileLinesTheLastItemReadAndErrorsToTheCaller) {
    const QString path = Path("notes.txt");
    EXPECT_EQ(file.AppendToFile(path, QStringLiteral("first")), 0);
    EXPECT_EQ(file.AppendToFile(path, QStringLiteral("a,\"b,c\"")), 0);
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    EXPECT_EQ(f.readAll(), QByteArray("first\r\na,\"b,c\"\r\n"));
    QString text = QStringLiteral("old");
    EXPECT_EQ(file.GetFromFile(path, text), 0);
    EXPECT_EQ(text, QStringLiteral("b,c")) << "items, not lines: the quoted last item keeps its comma";

    using hv::testing::Raised;
    EXPECT_EQ(Raised([&] { file.GetFromFile(Path("missing.txt"), text); }), errnum::FileNotFound);
    EXPECT_EQ(Raised([&] { file.AppendToFile(p.App_Path(), QStringLiteral("x")); }),
              errnum::PathFileAccessError);
    EXPECT_EQ(Raised([&] { file.AppendToFile(QString(), QStringLiteral("x")); }),
              errnum::BadFileNameOrNumber);
}

} // namespace
} // namespace hv
