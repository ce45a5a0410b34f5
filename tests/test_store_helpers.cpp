// The general registry and text file helpers, on the registry stand-in and scratch files.
#include "TestSupport.h"
#include "platform/Err.h"
#include "platform/IniRegistry.h"
#include "platform/ScriptedPlatform.h"
#include "store/clsFile.h"
#include "store/clsRegistry.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

namespace hv {
namespace {

class StoreHelpersRegistry : public ::testing::Test {
protected:
    IniRegistry& Hive() { return static_cast<IniRegistry&>(p.Registry_Root()); }
    ScriptedPlatform p;
    PlatformScope scope{p};
    clsRegistry reg;
    const QString key = QStringLiteral("SOFTWARE\\Halvenor\\Console");
};

TEST_F(StoreHelpersRegistry, DataDecidesTheStoredType) {
    struct Case {
        const char* name;
        QVariant data;
        std::optional<quint32> dword; // what a double word holds; none: a text is stored
        const char* text;
        bool ok;
    };
    const Case cases[] = {
        {"digits", QStringLiteral("8080"), 8080u, nullptr, true},
        {"blanks round digits", QStringLiteral("  42 "), 42u, nullptr, true},
        {"negative", QStringLiteral("-1"), 0xFFFFFFFFu, nullptr, true},
        {"fraction to even", QStringLiteral("2.5"), 2u, nullptr, true},
        {"hex", QStringLiteral("&H10"), 16u, nullptr, true},
        {"number", QVariant(qint64(7)), 7u, nullptr, true},
        {"too large", QStringLiteral("99999999999"), std::nullopt, nullptr, false},
        {"text trimmed", QStringLiteral("  host name "), std::nullopt, "host name", true},
        {"tabs kept", QStringLiteral("\tx\t"), std::nullopt, "\tx\t", true},
        {"empty text", QString(), std::nullopt, "", true},
        {"digits and letters", QStringLiteral("12ab"), std::nullopt, "12ab", true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const QString name = QString::fromLatin1(c.name);
        EXPECT_EQ(reg.RegSetKeyValue(HKEY_LOCAL_MACHINE, key, name, c.data), c.ok);
        EXPECT_EQ(Hive().Get_Dword(key, name), c.dword);
        if (c.text)
            EXPECT_EQ(Hive().Get_String(key, name), std::optional<QString>(QString::fromLatin1(c.text)));
        else
            EXPECT_FALSE(Hive().Get_String(key, name).has_value());
    }
    EXPECT_TRUE(reg.RegKeyDoesExist(HKEY_LOCAL_MACHINE, key)) << "the write created the key";
}

TEST_F(StoreHelpersRegistry, QueryByTypeAndItsErrorCode) {
    Hive().Set_String(key, QStringLiteral("Text"), QStringLiteral("a b"));
    Hive().Set_Dword(key, QStringLiteral("Count"), 0xFFFFFFFEu);
    Hive().Set_Binary(key, QStringLiteral("Bytes"), QByteArray("ab\0cd", 5));

    long error = 99;
    EXPECT_EQ(reg.RegQueryKeyValue(HKEY_LOCAL_MACHINE, key, QStringLiteral("Text"), error),
              QVariant(QStringLiteral("a b")));
    EXPECT_EQ(error, ERROR_SUCCESS);
    EXPECT_EQ(reg.RegQueryKeyValue(HKEY_LOCAL_MACHINE, key, QStringLiteral("Count"), error).toLongLong(), -2);
    EXPECT_EQ(reg.RegQueryKeyValue(HKEY_LOCAL_MACHINE, key, QStringLiteral("Bytes"), error),
              QVariant(QStringLiteral("ab")));

    EXPECT_EQ(reg.RegQueryKeyValue(HKEY_LOCAL_MACHINE, key, QStringLiteral("Absent"), error),
              QVariant(QString()));
    EXPECT_EQ(error, ERROR_FILE_NOT_FOUND);

    // A key that does not open leaves the code as it was.
    error = 99;
    EXPECT_EQ(reg.RegQueryKeyValue(HKEY_LOCAL_MACHINE, key + QStringLiteral("\\Missing"),
                                   QStringLiteral("Text"), error),
              QVariant(QString()));
    EXPECT_EQ(error, 99);
    EXPECT_EQ(reg.RegQueryKeyValue(HKEY_CURRENT_USER, key, QStringLiteral("Text"), error),
              QVariant(QString()));
    EXPECT_EQ(error, 99);
}

TEST_F(StoreHelpersRegistry, KeysAndValuesComeAndGo) {
    EXPECT_FALSE(reg.RegKeyDoesExist(HKEY_LOCAL_MACHINE, key));
    EXPECT_FALSE(reg.CanOpenRegKey(HKEY_LOCAL_MACHINE, key));
    EXPECT_TRUE(reg.RegKeyDoesExist(HKEY_LOCAL_MACHINE, QString())) << "the root itself opens";
    EXPECT_FALSE(reg.CreateKey(HKEY_USERS, key));

    // A missing key is not attempted.
    EXPECT_FALSE(reg.DeleteKey(HKEY_LOCAL_MACHINE, key, QStringLiteral("Sub")));
    EXPECT_FALSE(reg.RegDeleteKeyValue(HKEY_LOCAL_MACHINE, key, QStringLiteral("V")));

    ASSERT_TRUE(reg.CreateKey(HKEY_LOCAL_MACHINE, key + QStringLiteral("\\Sub\\Leaf")));
    EXPECT_TRUE(reg.CanOpenRegKey(HKEY_LOCAL_MACHINE, key));
    // A key with keys below it stays.
    EXPECT_FALSE(reg.DeleteKey(HKEY_LOCAL_MACHINE, key, QStringLiteral("Sub")));
    EXPECT_TRUE(reg.DeleteKey(HKEY_LOCAL_MACHINE, key + QStringLiteral("\\Sub"), QStringLiteral("Leaf")));
    EXPECT_TRUE(reg.DeleteKey(HKEY_LOCAL_MACHINE, key, QStringLiteral("Sub")));
    EXPECT_FALSE(reg.RegKeyDoesExist(HKEY_LOCAL_MACHINE, key + QStringLiteral("\\Sub")));
    EXPECT_FALSE(reg.DeleteKey(HKEY_LOCAL_MACHINE, key, QStringLiteral("Sub"))) << "already gone";

    ASSERT_TRUE(reg.RegSetKeyValue(HKEY_LOCAL_MACHINE, key, QStringLiteral("V"), QStringLiteral("x")));
    EXPECT_TRUE(reg.RegDeleteKeyValue(HKEY_LOCAL_MACHINE, key, QStringLiteral("V")));
    EXPECT_FALSE(reg.RegDeleteKeyValue(HKEY_LOCAL_MACHINE, key, QStringLiteral("V")));
}

class StoreHelpersFile : public ::testing::Test {
protected:
    void TearDown() override { Err().Clear(); }
    QString Path(const char* name) { return QDir(p.App_Path()).filePath(QString::fromLatin1(name)); }
    static long Failure_Of(const std::function<void()>& f) { return hv::testing::Raised(f); }
    ScriptedPlatform p;
    clsFile file;
};

TEST_F(StoreHelpersFile, AppendedLinesAndTheLastItemRead) {
    const QString path = Path("notes.txt");
    EXPECT_EQ(file.AppendToFile(path, QStringLiteral("first")), 0);
    EXPECT_EQ(file.AppendToFile(path, QStringLiteral("a,\"b,c\"")), 0);
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    EXPECT_EQ(f.readAll(), QByteArray("first\r\na,\"b,c\"\r\n"));
    f.close();

    QString text = QStringLiteral("old");
    EXPECT_EQ(file.GetFromFile(path, text), 0);
    EXPECT_EQ(text, QStringLiteral("b,c")) << "items, not lines: the quoted last item keeps its comma";

    const QString empty = Path("empty.txt");
    QFile(empty).open(QIODevice::WriteOnly);
    text = QStringLiteral("old");
    EXPECT_EQ(file.GetFromFile(empty, text), 0);
    EXPECT_TRUE(text.isEmpty());
}

TEST_F(StoreHelpersFile, FileErrorsGoToTheCaller) {
    QString text;
    EXPECT_EQ(Failure_Of([&] { file.GetFromFile(Path("missing.txt"), text); }), errnum::FileNotFound);
    EXPECT_EQ(Failure_Of([&] { file.AppendToFile(p.App_Path(), QStringLiteral("x")); }),
              errnum::PathFileAccessError);
    EXPECT_EQ(Failure_Of([&] { file.AppendToFile(QString(), QStringLiteral("x")); }),
              errnum::BadFileNameOrNumber);
}

} // namespace
} // namespace hv
