// The list text file: how fields are cut from a file, how each line's encoding is decided, how lists are
// written, and how a file larger than any window streams through.
#include "core/ListFile.h"
#include "platform/Err.h"

#include <QBuffer>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <ostream>
#include <string>

using namespace Qt::Literals::StringLiterals;

namespace {

using hv::Read_List_Fields;

// Text as written, a leading U+FEFF included (fromUtf16 would take it for a byte order mark).
QString U(const char16_t* text) {
    return QString(reinterpret_cast<const QChar*>(text), qsizetype(std::char_traits<char16_t>::length(text)));
}

struct FieldCase {
    const char* name;
    QByteArray bytes;
    QStringList fields;
};

void PrintTo(const FieldCase& c, std::ostream* os) {
    *os << c.name;
}

class ListFileFields : public ::testing::TestWithParam<FieldCase> {};

TEST_P(ListFileFields, CutsAndDecodesFields) {
    EXPECT_EQ(Read_List_Fields(GetParam().bytes), GetParam().fields);
}

INSTANTIATE_TEST_SUITE_P(
    Shapes, ListFileFields,
    ::testing::Values(
        FieldCase{"crlf", "a.com\r\nb.com\r\n", {"a.com", "b.com"}},
        FieldCase{"lone_cr", "a.com\rb.com", {"a.com", "b.com"}},
        FieldCase{"spaces_ahead_skipped_tab_kept", "   x.com,\t y.com\r\n", {"x.com", "\t y.com"}},
        FieldCase{"trailing_blanks_kept_for_the_caller", "x.com  \r\n", {"x.com  "}},
        FieldCase{"quoted_field_keeps_comma", "\"Notepad, Calc\",z\r\n", {"Notepad, Calc", "z"}},
        FieldCase{"quoted_field_keeps_its_blanks", "\"  a \",b", {"  a ", "b"}},
        FieldCase{"text_after_closing_quote_dropped", "\"ab\"cd,e\r\n", {"ab", "e"}},
        FieldCase{"quoted_field_spans_line_end", "\"a\r\nb\",c", {"a\r\nb", "c"}},
        FieldCase{"unclosed_quote_runs_to_the_end", "\"a,b", {"a,b"}},
        FieldCase{"line_of_blanks_is_empty_field", "a\r\n   \r\nb", {"a", "", "b"}},
        FieldCase{"comma_at_line_end_gives_empty_field", "a,\r\nb\r\n", {"a", "", "b"}},
        FieldCase{"empty_file_has_no_field", "", {}}, FieldCase{"one_line_end_only", "\r\n", {""}},
        FieldCase{
            "nul_stays_in_the_text", QByteArray("a\0b,c", 5), {u"a"_s + QChar(0) + QLatin1Char('b'), "c"}}),
    [](const auto& info) { return std::string(info.param.name); });

INSTANTIATE_TEST_SUITE_P(
    Encodings, ListFileFields,
    ::testing::Values(
        FieldCase{"utf8_bom_skipped",
                  "\xef\xbb\xbf"
                  "caf\xc3\xa9,b",
                  {U(u"café"), "b"}},
        FieldCase{"windows_1252_when_not_utf8", "caf\xe9,\x80uro\r\n", {U(u"café"), U(u"€uro")}},
        FieldCase{"code_page_letters_apart_from_latin1", "\x80\x8a\x9f\xa0\xff", {U(u"€ŠŸ\u00a0ÿ")}},
        // One stray byte turns only its own line to Windows-1252.
        FieldCase{"each_line_decided_alone",
                  "m\xc3\xbcnchen\r\nna\xefve\r\nm\xc3\xbcnchen",
                  {U(u"münchen"), U(u"naïve"), U(u"münchen")}},
        FieldCase{"stray_byte_late_in_a_line_rules_the_whole_line", "m\xc3\xbc,x\xff", {U(u"mÃ¼"), U(u"xÿ")}},
        FieldCase{"quoted_field_decodes_each_line_alone", "\"\xc3\xa9\r\n\xe9\"", {U(u"é\r\né")}},
        FieldCase{"surrogates_and_overlong_forms_are_not_utf8",
                  "\xed\xa0\x80,\xc0\xaf",
                  {U(u"í\u00a0\u20ac"), U(u"À¯")}},
        FieldCase{"later_bom_is_text",
                  "\xef\xbb\xbf\xef\xbb\xbf"
                  "a,\xef\xbb\xbf"
                  "b",
                  {U(u"\ufeffa"), U(u"\ufeffb")}},
        FieldCase{"utf16le_with_bom",
                  QByteArray("\xff\xfe"
                             "a\0,\0\xfc\0\r\0\n\0=\xd8\0\xde",
                             16),
                  {"a", U(u"ü"), U(u"\U0001F600")}},
        FieldCase{"utf16be_with_bom", QByteArray("\xfe\xff\0a\0,\xfe\xff\0b", 10), {"a", U(u"\ufeffb")}},
        FieldCase{"utf16_odd_last_byte_is_a_broken_character",
                  QByteArray("\xff\xfe"
                             "a\0b",
                             5),
                  {U(u"a\ufffd")}}),
    [](const auto& info) { return std::string(info.param.name); });

QBuffer* Open_Buffer(const QByteArray& bytes, QObject* parent) {
    auto* buffer = new QBuffer(parent);
    buffer->setData(bytes);
    buffer->open(QIODevice::ReadOnly);
    return buffer;
}

TEST(ListFile, ReadingPastTheEndIsARunTimeFailure) {
    QObject owner;
    hv::ListFieldReader reader(*Open_Buffer("a", &owner));
    EXPECT_EQ(reader.Next_Field().text, u"a"_s);
    EXPECT_TRUE(reader.Eof());
    EXPECT_THROW(reader.Next_Field(), hv::RunTimeFailure);
    EXPECT_EQ(hv::Err().Number, hv::errnum::InputPastEndOfFile);
    hv::Err().Clear();
}

// Fields and lines far longer than the reader's window: what it keeps is bounded, and what it tells about
// the rest (a NUL, more text) holds however far away that lies.
TEST(ListFile, LongFieldsAndLinesStreamInBoundedMemory) {
    constexpr qsizetype kKeep = hv::ListField::kKeep;
    struct LongCase {
        const char* name;
        QByteArray bytes;
        qsizetype keptSize;
        bool more;
        bool nul;
        QString nextField;
    };
    const QByteArray big(3 << 20, 'a');
    const QByteArray emoji = "\xf0\x9f\x98\x80"; // U+1F600, two UTF-16 units
    QByteArray pairAtTheEdge(kKeep - 1, 'a');
    pairAtTheEdge += emoji + "bb";
    for (const LongCase& c : {
             LongCase{"field_longer_than_kept", big + ",next", kKeep, true, false, "next"},
             LongCase{"nul_far_beyond_what_is_kept", big + QByteArray(1, '\0') + "\r\nnext", kKeep, true,
                      true, "next"},
             LongCase{"only_blanks_beyond_what_is_kept",
                      QByteArray(kKeep, 'a') + QByteArray(kKeep, ' ') + ",next", kKeep, false, false, "next"},
             LongCase{"surrogate_pair_not_split_at_the_keep", pairAtTheEdge + ",next", kKeep - 1, true, false,
                      "next"},
             // The stray byte ends a 3 MiB line: the line is judged to its end before it is read again.
             LongCase{"line_longer_than_the_window_judged_whole", "\xc3\xa9" + big + ",\xe9\r\nnext", kKeep,
                      true, false, U(u"é")},
         }) {
        SCOPED_TRACE(c.name);
        QObject owner;
        hv::ListFieldReader reader(*Open_Buffer(c.bytes, &owner));
        const hv::ListField first = reader.Next_Field();
        EXPECT_EQ(first.text.size(), c.keptSize);
        EXPECT_EQ(first.more, c.more);
        EXPECT_EQ(first.nul, c.nul);
        ASSERT_FALSE(reader.Eof());
        EXPECT_EQ(reader.Next_Field().text, c.nextField);
        if (std::string_view(c.name) == "line_longer_than_the_window_judged_whole") {
            EXPECT_TRUE(first.text.startsWith(U(u"Ã©a")));
            EXPECT_EQ(reader.Next_Field().text, u"next"_s);
        }
    }
}

TEST(ListFile, ProgressCountsTheFilesBytes) {
    for (const QByteArray& bytes : {QByteArray("a,b\r\nc"), QByteArray("\xff\xfe"
                                                                       "a\0,\0b\0",
                                                                       8)}) {
        QObject owner;
        hv::ListFieldReader reader(*Open_Buffer(bytes, &owner));
        EXPECT_EQ(reader.Bytes_Read(), 0);
        while (!reader.Eof())
            reader.Next_Field();
        EXPECT_EQ(reader.Bytes_Read(), bytes.size());
    }
}

// What Export writes comes back field for field, except a comma or a line end inside an item, which the
// format has no way to keep.
TEST(ListFile, ExportThenImportGivesTheItemsBack) {
    for (const QStringList& items :
         {QStringList{U(u"caf\u00e9"), "\tcalc.exe", U(u"\U0001F600.example"), U(u"x\ufeffy")},
          QStringList{U(u"\ufeffstarts.with.a.mark"), U(u"\ufefflater.too")}, QStringList{"", "a b  "},
          QStringList{U(u"na\u00efve"), QString(QChar(0x80))}}) {
        EXPECT_EQ(Read_List_Fields(hv::Export_Bytes(items)), items);
    }
    EXPECT_EQ(hv::Export_Bytes({U(u"caf\u00e9"), "x, y"}), QByteArray("caf\xc3\xa9\r\nx, y\r\n"));
    EXPECT_EQ(hv::Export_Bytes({U(u"\ufeffa")}), QByteArray("\xef\xbb\xbf\xef\xbb\xbf"
                                                            "a\r\n"));
    EXPECT_EQ(hv::Export_Bytes({}), QByteArray());
    QTemporaryDir dir;
    const QString path = dir.filePath("list.txt");
    hv::Write_List_File(path, {"first", "second", "third"});
    hv::Write_List_File(path, {"Notepad, Calc", "x"});
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    EXPECT_EQ(f.readAll(), QByteArray("Notepad, Calc\r\nx\r\n"));
    // Export writes no quotes, so an exported comma comes back as two rules.
    hv::ListFileInput input(path);
    QStringList back;
    while (!input.Reader().Eof())
        back << input.Reader().Next_Field().text;
    EXPECT_EQ(back, (QStringList{"Notepad", "Calc", "x"}));
    EXPECT_EQ(input.Size(), 18);
}

TEST(ListFile, FileFailuresAreRunTimeErrors) {
    QTemporaryDir dir;
    struct Failure {
        QString path;
        long number;
        bool write;
    };
    for (const Failure& c :
         {Failure{dir.filePath("missing.txt"), hv::errnum::FileNotFound, false},
          Failure{dir.path(), hv::errnum::PathFileAccessError, false},
          Failure{u"/dev/zero"_s, hv::errnum::PathFileAccessError, false},
          Failure{QString(), hv::errnum::BadFileNameOrNumber, false},
          Failure{dir.filePath("no/such/dir/x.txt"), hv::errnum::PathFileAccessError, true},
          Failure{QString(), hv::errnum::BadFileNameOrNumber, true}}) {
        SCOPED_TRACE(c.path.toStdString());
        if (c.write)
            EXPECT_THROW(hv::Write_List_File(c.path, {"x"}), hv::RunTimeFailure);
        else
            EXPECT_THROW(hv::ListFileInput{c.path}, hv::RunTimeFailure);
        EXPECT_EQ(hv::Err().Number, c.number);
        hv::Err().Clear();
    }
}

} // namespace
