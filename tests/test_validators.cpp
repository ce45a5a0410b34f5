// The limits of the pages' validators: the only guard of the fields that use them.
#include "store/Bits.h"
#include "store/modCommonFuns.h"

#include <gtest/gtest.h>

#include <functional>

namespace {

using namespace hv;

QString Repeat(int n, char c = 'a') {
    return QString(n, QLatin1Char(c));
}

struct TextCase {
    const char* validator;
    std::function<bool(const QString&)> check;
    QString value;
    bool expected;
};

TEST(ValidatorsLimits, TextValidatorsAtTheirEdges) {
    const auto user = [](const QString& s) { return Is_Valid_User_Name(s); };
    const auto pwd = [](const QString& s) { return Is_Valid_Password(s); };
    const auto server = [](const QString& s) { return Is_Valid_Server_Name(s); };
    const auto extn = [](const QString& s) { return Is_Valid_File_Extension(s); };
    const auto mail = [](const QString& s) { return Is_Valid_Email_Address(s); };
    const auto url = [](const QString& s) { return Is_Valid_Url(s); };
    const auto title = [](const QString& s) { return Is_Valid_Window_Title(s); };

    const std::vector<TextCase> cases = {
        {"user", user, Repeat(0), false},
        {"user", user, Repeat(1), true},
        {"user", user, Repeat(255), true},
        {"user", user, Repeat(256), false},
        {"user", user, "o'brien", false},
        {"user", user, "John Smith", true}, // blanks are allowed in user names
        {"password", pwd, Repeat(0), false},
        {"password", pwd, Repeat(1), true},
        {"password", pwd, Repeat(20), true},
        {"password", pwd, Repeat(21), false},
        {"password", pwd, "pa'ss", false},
        {"server", server, Repeat(0), false},
        {"server", server, Repeat(100), true},
        {"server", server, Repeat(101), false},
        {"server", server, "my server", false},
        {"server", server, "my\tserver", true},
        {"extension", extn, Repeat(1), false},
        {"extension", extn, Repeat(2), true},
        {"extension", extn, Repeat(300), true},
        {"extension", extn, "e e", false},
        {"extension", extn, "e'e", true}, // only the store rejects it
        {"email", mail, Repeat(0), false},
        {"email", mail, Repeat(1), true},
        {"email", mail, Repeat(50), true},
        {"email", mail, Repeat(51), false},
        {"email", mail, "a b@x.example", false},
        {"email", mail, "a\tb@x.example", true},
        {"url", url, "", true},
        {"url", url, "games.example", true},
        {"url", url, "games .example", false},
        {"url", url, "games\t.example", true},
        {"url", url, QString::fromUtf8("games\u00a0.example"), true}, // a no-break space is no blank
        {"title", title, "", true},
        {"title", title, "it's a ' title", true},
        // A character outside the basic plane counts once: 20 of them are still a valid password.
        {"password", pwd, QString::fromUtf8("\U0001F600").repeated(20), true},
        {"password", pwd, QString::fromUtf8("\U0001F600").repeated(21), false},
    };
    for (const TextCase& c : cases)
        EXPECT_EQ(c.check(c.value), c.expected) << c.validator << " with " << c.value.size() << " units: \""
                                                << c.value.left(30).toStdString() << "\"";
}

TEST(ValidatorsLimits, PortRange) {
    struct Row {
        long port;
        bool expected;
    };
    for (const Row& r : {Row{-1, false}, Row{0, true}, Row{65535, true}, Row{65536, false}, Row{80, true}})
        EXPECT_EQ(Is_Valid_Port(r.port), r.expected) << r.port;
}

TEST(ValidatorsLimits, BytesToTextKeepsEveryByte) {
    const QByteArray bytes("h\0v\xffs", 5);
    const QString text = Bytes_To_Text(bytes);
    ASSERT_EQ(text.size(), 5);
    EXPECT_EQ(text.at(1).unicode(), 0);
    EXPECT_EQ(text.at(3).unicode(), 0xff);
    EXPECT_TRUE(text.contains(QStringLiteral("s")));
}

TEST(ValidatorsApplyBit, SetsAndClearsWithTheTopBitDroppedOnClear) {
    struct Row {
        long mask;
        long flag;
        bool on;
        long expected;
    };
    const long bit31 = 1L << 31;
    for (const Row& r : {Row{0, 4, true, 4}, Row{5, 4, false, 1}, Row{1, 4, false, 1},
                         Row{bit31 | 8 | 1, 8, false, 1}, // clearing bit 3 also clears bit 31
                         Row{bit31 | 1, 2, true, bit31 | 3}}) {
        long mask = r.mask;
        EXPECT_TRUE(Apply_Bit(mask, r.flag, r.on));
        EXPECT_EQ(mask, r.expected) << r.mask << " " << r.flag << " " << r.on;
    }
}

} // namespace
