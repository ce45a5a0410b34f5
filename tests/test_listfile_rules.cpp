// How the rule lists prepare typed and imported texts, and the port page's conversions.
#include "filters/PortRules.h"
#include "filters/RuleLists.h"
#include "platform/Err.h"

#include <gtest/gtest.h>

#include <ostream>

namespace {

struct ImportCase {
    const char* name;
    const hv::RuleListSpec& (*list)();
    QString field;
    QString stored;
};

// Cases print as their names, which keeps the test listing readable.
void PrintTo(const ImportCase& c, std::ostream* os) {
    *os << c.name;
}

class ListFileImportField : public ::testing::TestWithParam<ImportCase> {};

TEST_P(ListFileImportField, IsTrimmedLoweredAndCutAsItsListSays) {
    EXPECT_EQ(hv::Prepare_Import_Field(GetParam().field, GetParam().list()), GetParam().stored);
}

const QString k60 = QString(50, u'a') + QStringLiteral("bbbbbbbbbb");

INSTANTIATE_TEST_SUITE_P(
    ListFileRules, ListFileImportField,
    ::testing::Values(ImportCase{"website_lowers_then_cuts_to_50", hv::rulelists::Black,
                                 QStringLiteral("  ") + k60.toUpper(), QString(50, u'a')},
                      ImportCase{"white_list_alike", hv::rulelists::White, QStringLiteral(" .Example.COM "),
                                 QStringLiteral(".example.com")},
                      ImportCase{"file_cut_to_10_keeps_case", hv::rulelists::File,
                                 QStringLiteral(" .Document.Backup "), QStringLiteral(".Document.")},
                      ImportCase{"pop3_cut_to_30", hv::rulelists::Pop3, QString(40, u'M'), QString(30, u'M')},
                      ImportCase{"smtp_cut_to_30", hv::rulelists::Smtp, QStringLiteral("A@B.com"),
                                 QStringLiteral("A@B.com")},
                      ImportCase{"exe_cut_to_50", hv::rulelists::Exe, QString(55, u'x'), QString(50, u'x')},
                      ImportCase{"window_cut_to_30", hv::rulelists::Window,
                                 QStringLiteral("Untitled - Notepad And Much More Text"),
                                 QStringLiteral("Untitled - Notepad And Much Mo")},
                      ImportCase{"line_of_blanks_is_empty", hv::rulelists::Window, QStringLiteral("    "),
                                 QString()},
                      ImportCase{"only_spaces_are_trimmed", hv::rulelists::Exe, QStringLiteral("\tcalc.exe "),
                                 QStringLiteral("\tcalc.exe")}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(ListFileRules, ImportCutHidesABlankBeyondTheCut) {
    // A blank after position 50 is cut away before the check looks, so the URL passes.
    const QString field = QString(50, u'a') + QStringLiteral(" tail");
    const QString stored = hv::Prepare_Import_Field(field, hv::rulelists::Black());
    EXPECT_TRUE(hv::rulelists::Black().importCheck(stored));
    EXPECT_FALSE(hv::rulelists::Black().importCheck(QStringLiteral("a b")));
    // The mail lists import whatever they read.
    EXPECT_TRUE(hv::rulelists::Pop3().importCheck(QStringLiteral("with blank")));
    EXPECT_FALSE(hv::rulelists::Pop3().check(QStringLiteral("with blank")));
}

TEST(ListFileRules, AddTextIsPreparedAsEachListWants) {
    const QString typed = QStringLiteral("  Notepad.EXE ");
    EXPECT_EQ(hv::Prepare_Add_Text(typed, hv::AddText::AsTyped), typed);
    EXPECT_EQ(hv::Prepare_Add_Text(typed, hv::AddText::Trim), QStringLiteral("Notepad.EXE"));
    EXPECT_EQ(hv::Prepare_Add_Text(typed, hv::AddText::TrimLower), QStringLiteral("notepad.exe"));
    EXPECT_EQ(hv::Trim_Blanks(QStringLiteral("   ")), QString());
    // As typed, the file page's check sees the blanks and refuses.
    EXPECT_FALSE(hv::rulelists::File().check(
        hv::Prepare_Add_Text(QStringLiteral(" .zip"), hv::rulelists::File().addText)));
    EXPECT_TRUE(hv::rulelists::File().check(
        hv::Prepare_Add_Text(QStringLiteral(".z"), hv::rulelists::File().addText)));
    EXPECT_FALSE(hv::rulelists::File().check(
        hv::Prepare_Add_Text(QStringLiteral("z"), hv::rulelists::File().addText)));
}

TEST(ListFilePorts, ProtocolsFiltersAndCodesConvert) {
    struct ProtocolCase {
        const char* protocol;
        long port;
    };
    for (const ProtocolCase& c :
         {ProtocolCase{"HTTP", 80}, ProtocolCase{"HTTPS", 443}, ProtocolCase{"FTP Control", 21},
          ProtocolCase{"FTP Data", 20}, ProtocolCase{"SMTP", 25}, ProtocolCase{"POP3", 110},
          ProtocolCase{"NEWS", 119}, ProtocolCase{"MSN Messenger", 1863},
          ProtocolCase{"Yahoo Messenger", 5050}, ProtocolCase{"Google Talk", 5222}, ProtocolCase{"http", 0},
          ProtocolCase{"Gopher", 0}}) {
        long port = -1;
        bool found = false;
        hv::Protocol_To_Port(QLatin1String(c.protocol), port, found);
        EXPECT_EQ(port, c.port) << c.protocol;
        EXPECT_TRUE(found);
    }
    EXPECT_EQ(hv::Port_Protocols().size(), 10);

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
    hv::Filter_Text_To_Code(QStringLiteral("Odd"), code, found);
    EXPECT_EQ(code, 0);
    QString text = QStringLiteral("stale");
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
