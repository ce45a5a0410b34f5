// The limits of the pages' validators: the only guard of the fields that use them.
#include "store/Bits.h"
#include "store/modCommonFuns.h"

#include <gtest/gtest.h>

#include <functional>
#include <tuple>
#include <vector>

namespace {

using namespace hv;

TEST(Validators, LimitsAtTheirEdges) {
    const auto a = [](int n) { return QString(n, QLatin1Char('a')); };
    const QString smiley = QString::fromUtf8("\U0001F600"); // outside the basic plane: counts once
    const struct {
        const char* validator;
        std::function<bool(const QString&)> check;
        std::vector<std::pair<QString, bool>> cases;
    } validators[] = {
        // clang-format off
        {"user", Is_Valid_User_Name, {{a(0), false}, {a(1), true}, {a(255), true}, {a(256), false},
                                      {"o'brien", false}, {"John Smith", true}}}, // blanks are allowed
        {"password", Is_Valid_Password, {{a(0), false}, {a(1), true}, {a(20), true}, {a(21), false},
                                         {"pa'ss", false}, {smiley.repeated(20), true}, {smiley.repeated(21), false}}},
        {"server", Is_Valid_Server_Name, {{a(0), false}, {a(100), true}, {a(101), false}, {"my server", false},
                                          {"my\tserver", true}}},
        // Only the store rejects an apostrophe in an extension.
        {"extension", Is_Valid_File_Extension, {{a(1), false}, {a(2), true}, {a(300), true}, {"e e", false},
                                                {"e'e", true}}},
        {"email", Is_Valid_Email_Address, {{a(0), false}, {a(1), true}, {a(50), true}, {a(51), false},
                                           {"a b@x.example", false}, {"a\tb@x.example", true}}},
        // A no-break space is no blank.
        {"url", Is_Valid_Url, {{"", true}, {"games .example", false}, {"games\t.example", true},
                               {QString::fromUtf8("games\u00a0.example"), true}}},
        {"title", Is_Valid_Window_Title, {{"", true}, {"it's a ' title", true}}},
        // clang-format on
    };
    for (const auto& v : validators)
        for (const auto& [value, expected] : v.cases)
            EXPECT_EQ(v.check(value), expected) << v.validator << " with " << value.size() << " units: \""
                                                << value.left(30).toStdString() << "\"";
    for (const auto& [port, expected] : {std::pair{-1L, false}, {0L, true}, {65535L, true}, {65536L, false}})
        EXPECT_EQ(Is_Valid_Port(port), expected) << port;
}

// Clearing a bit also clears bit 31; setting one keeps it.
TEST(Validators, ApplyBitDropsTheTopBitOnClear) {
    const long bit31 = 1L << 31;
    // clang-format off
    for (auto [mask, flag, on, expected] : {std::tuple{0L, 4L, true, 4L}, {5L, 4L, false, 1L}, {1L, 4L, false, 1L},
                                            {bit31 | 9, 8L, false, 1L}, {bit31 | 1, 2L, true, bit31 | 3}}) {
        // clang-format on
        const long before = mask;
        EXPECT_TRUE(Apply_Bit(mask, flag, on));
        EXPECT_EQ(mask, expected) << before << " " << flag << " " << on;
    }
}

} // namespace
