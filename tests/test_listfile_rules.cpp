// How the rule lists prepare typed and imported texts, and the port page's conversions.
#include "filters/model/PortRules.h"
#include "filters/model/RuleLists.h"
#include "platform/Err.h"
#include "store/modCommonFuns.h"

#include <gtest/gtest.h>

#include <optional>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace {

// What Import stores for a field read from a file, by list: the same field can be a rule on one list and
// refused on another; a NUL anywhere in a field refuses it on every list.
TEST(ListFileRules, ImportRuleByListAndField) {
    const QString emoji = QString::fromUtf16(u"\U0001F600");
    struct RuleCase {
        const char* name;
        const hv::RuleListSpec& spec;
        hv::ListField field;
        std::optional<QString> rule;
    };
    const auto Field = [](const QString& text, bool more = false, bool nul = false) {
        hv::ListField f;
        f.text = text;
        f.more = more;
        f.nul = nul;
        return f;
    };
    using namespace hv::rulelists;
    const QString a50(50, u'a');
    // clang-format off
    for (const RuleCase& c : {
             RuleCase{"url_lowered_and_cut", Black(), Field(QString(60, u'A')), a50},
             // A blank after position 50 is cut away before the check looks, so the URL passes.
             RuleCase{"blank_after_the_cut_gone_before_the_check", Black(), Field(a50 + u" tail"_s), a50},
             RuleCase{"nul_refused_on_a_list_that_takes_anything", Window(), Field(u"a"_s + QChar(0) + u'b', false, true), std::nullopt},
             RuleCase{"nul_beyond_what_is_kept_refused", Exe(), Field("calc.exe", true, true), std::nullopt},
             RuleCase{"cut_counts_characters_not_units", Window(), Field(emoji.repeated(31)), emoji.repeated(30)},
             RuleCase{"cut_keeps_a_pair_whole", File(), Field(u"abcdefghi"_s + emoji + u'z'), u"abcdefghi"_s + emoji},
             RuleCase{"blanks_kept_before_more_text", Pop3(), Field(u"a"_s + QString(40, u' '), true), u"a"_s + QString(29, u' ')},
             RuleCase{"blanks_at_the_end_trimmed", Pop3(), Field(u"a  "_s), u"a"_s},
             RuleCase{"only_spaces_are_trimmed_a_tab_is_part_of_the_rule", Exe(), Field(u"\tcalc.exe "_s), u"\tcalc.exe"_s},
             RuleCase{"a_line_of_spaces_is_an_empty_rule", Window(), Field(u"    "_s), QString()},
             RuleCase{"blank_inside_a_url_refused", White(), Field("a b"), std::nullopt},
             // The mail lists import what their Add would refuse.
             RuleCase{"mail_list_imports_a_blank", Pop3(), Field(u"with blank"_s), u"with blank"_s},
             RuleCase{"bom_is_text", Black(), Field(QChar(0xFEFF) + u"a.com"_s), QChar(0xFEFF) + u"a.com"_s},
         }) {
        // clang-format on
        EXPECT_EQ(hv::Import_Rule(c.field, c.spec), c.rule) << c.name;
    }
    EXPECT_FALSE(Pop3().check(u"with blank"_s));
}

TEST(ListFilePorts, ProtocolsFiltersAndCodesConvert) {
    // Protocol names match exactly; an unknown name gives port 0 and still counts as found.
    for (const auto& [protocol, expected] :
         {std::pair{"Yahoo Messenger", 5050L}, std::pair{"http", 0L}, std::pair{"Gopher", 0L}}) {
        long port = -1;
        bool found = false;
        hv::Protocol_To_Port(QLatin1String(protocol), port, found);
        EXPECT_EQ(port, expected) << protocol;
        EXPECT_TRUE(found);
    }
    struct FilterCase {
        const char* text;
        long code;
        long protocolIndex;
    };
    for (const FilterCase& c :
         {FilterCase{"No Filter", 0, 0}, FilterCase{"HTTP Filter", 1, 0}, FilterCase{"Content Filter", 2, 0},
          FilterCase{"SMTP Filter", 3, 4}, FilterCase{"POP3 Filter", 4, 5}, FilterCase{"FTP Filter", 5, 0},
          FilterCase{"Block Incoming", 65533, 0}, FilterCase{"Block Outgoing", 65534, 0},
          FilterCase{"Block Completely", 65535, 0}}) {
        long code = -1, index = -1;
        bool found = false;
        hv::Filter_Text_To_Code(QLatin1String(c.text), code, found);
        EXPECT_EQ(code, c.code) << c.text;
        hv::Filter_To_Protocol_Index(QLatin1String(c.text), index, found);
        EXPECT_EQ(index, c.protocolIndex) << c.text;
        QString back;
        hv::Filter_Code_To_Text(c.code, back, found);
        EXPECT_EQ(back, QLatin1String(c.text));
    }
    long code = -1;
    bool found = false;
    hv::Filter_Text_To_Code(u"Odd"_s, code, found);
    EXPECT_EQ(code, 0);
    QString text = u"stale"_s;
    hv::Filter_Code_To_Text(60000, text, found);
    EXPECT_EQ(text, QString());
    EXPECT_TRUE(found);
}

TEST(ListFilePorts, PortBoxConvertsAsThePlatformDoes) {
    struct Good {
        const char* text;
        long value;
    };
    for (const Good& c : {Good{"80", 80}, Good{" 80 ", 80}, Good{"0", 0}, Good{"65536", 65536},
                          Good{"-1", -1}, Good{"12.5", 12}, Good{"13.5", 14}, Good{"12.51", 13},
                          Good{".7", 1}, Good{"8.", 8}, Good{"+25", 25}}) {
        EXPECT_EQ(hv::Text_To_Long(QLatin1String(c.text)), c.value) << c.text;
    }
    struct Bad {
        const char* text;
        long number;
    };
    for (const Bad& c : {Bad{"", hv::errnum::TypeMismatch}, Bad{"   ", hv::errnum::TypeMismatch},
                         Bad{"abc", hv::errnum::TypeMismatch}, Bad{"8#0", hv::errnum::TypeMismatch},
                         Bad{".", hv::errnum::TypeMismatch}, Bad{"--1", hv::errnum::TypeMismatch},
                         Bad{"99999999999", hv::errnum::Overflow}}) {
        EXPECT_THROW(hv::Text_To_Long(QLatin1String(c.text)), hv::RunTimeFailure) << c.text;
        EXPECT_EQ(hv::Err().Number, c.number) << c.text;
        hv::Err().Clear();
    }
}

} // namespace
