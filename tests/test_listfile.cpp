// The list text file: how fields are cut from a file and how lists are written.
#include "core/ListFile.h"
#include "platform/Err.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <ostream>

namespace {

using hv::Read_List_Fields;

struct FieldCase {
    const char* name;
    QByteArray bytes;
    QStringList fields;
};

void PrintTo(const FieldCase& c, std::ostream* os) {
    *os << c.name;
}

class ListFileFields : public ::testing::TestWithParam<FieldCase> {};

TEST_P(ListFileFields, CutsFieldsAndEstimatesRoomForThem) {
    EXPECT_EQ(Read_List_Fields(GetParam().bytes), GetParam().fields);
    // The import reserves room from the estimate; every shape of file must be covered by it.
    EXPECT_GE(hv::ListFieldReader(GetParam().bytes).Field_Estimate(), GetParam().fields.size());
}

INSTANTIATE_TEST_SUITE_P(
    ListFile, ListFileFields,
    ::testing::Values(FieldCase{"crlf", "a.com\r\nb.com\r\n", {"a.com", "b.com"}},
                      FieldCase{"lone_cr", "a.com\rb.com", {"a.com", "b.com"}},
                      FieldCase{"leading_blanks_skipped", "   x.com,\t y.com\r\n", {"x.com", "y.com"}},
                      FieldCase{"trailing_blanks_kept_for_the_caller", "x.com  \r\n", {"x.com  "}},
                      FieldCase{
                          "quoted_field_keeps_comma", "\"Notepad, Calc\",z\r\n", {"Notepad, Calc", "z"}},
                      FieldCase{"text_after_closing_quote_dropped", "\"ab\"cd,e\r\n", {"ab", "e"}},
                      FieldCase{"quoted_field_spans_line_end", "\"a\r\nb\",c", {"a\r\nb", "c"}},
                      FieldCase{"line_of_blanks_is_empty_field", "a\r\n   \r\nb", {"a", "", "b"}},
                      FieldCase{"comma_at_line_end_gives_empty_field", "a,\r\nb\r\n", {"a", "", "b"}},
                      FieldCase{"empty_file_has_no_field", "", {}},
                      FieldCase{"one_line_end_only", "\r\n", {""}},
                      FieldCase{"utf8_bom_skipped",
                                "\xef\xbb\xbf"
                                "caf\xc3\xa9,b",
                                {QStringLiteral(u"café"), QStringLiteral("b")}},
                      FieldCase{"windows_1252_when_not_utf8",
                                "caf\xe9,\x80uro\r\n",
                                {QStringLiteral(u"café"), QStringLiteral(u"€uro")}}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(ListFile, ReadingPastTheEndIsARunTimeFailure) {
    hv::ListFieldReader reader(QByteArray("a"));
    EXPECT_EQ(reader.Next_Field(), QStringLiteral("a"));
    EXPECT_TRUE(reader.Eof());
    EXPECT_THROW(reader.Next_Field(), hv::RunTimeFailure);
    EXPECT_EQ(hv::Err().Number, hv::errnum::InputPastEndOfFile);
    hv::Err().Clear();
}

TEST(ListFile, Windows1252CoversTheCodePageAndWinsOnOneStrayByte) {
    // The letters where Windows-1252 differs from Latin-1 must come in as older consoles wrote them.
    EXPECT_EQ(hv::Decode_List_Text(QByteArray("\x80\x8a\x9f\xa0\xff")), QStringLiteral(u"€ŠŸ\u00a0ÿ"));
    // One stray byte anywhere makes the whole file Windows-1252, even where a part would read as UTF-8.
    EXPECT_FALSE(hv::ListFieldReader(QByteArray("caf\xc3\xa9\r\nna\xefve")).Is_Utf8());
    EXPECT_EQ(Read_List_Fields(QByteArray("caf\xc3\xa9\r\nna\xefve")),
              (QStringList{QStringLiteral(u"cafÃ©"), QStringLiteral(u"naïve")}));
}

TEST(ListFile, WriteIsUtf8CrLfReplacesAndSplitsCommasOnTheWayBack) {
    EXPECT_EQ(hv::Export_Bytes({QStringLiteral(u"caf\u00e9"), "x, y"}),
              QByteArray("caf\xc3\xa9\r\nx, y\r\n"));
    EXPECT_EQ(hv::Export_Bytes({}), QByteArray());
    QTemporaryDir dir;
    const QString path = dir.filePath("list.txt");
    hv::Write_List_File(path, {"first", "second", "third"});
    hv::Write_List_File(path, {"Notepad, Calc", "x"});
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    EXPECT_EQ(f.readAll(), QByteArray("Notepad, Calc\r\nx\r\n"));
    // Export writes no quotes, so an exported comma comes back as two rules.
    EXPECT_EQ(Read_List_Fields(hv::Read_List_File(path)), (QStringList{"Notepad", "Calc", "x"}));
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
          Failure{dir.filePath("no/such/dir/x.txt"), hv::errnum::PathFileAccessError, true},
          Failure{QString(), hv::errnum::BadFileNameOrNumber, true}}) {
        SCOPED_TRACE(c.path.toStdString());
        if (c.write)
            EXPECT_THROW(hv::Write_List_File(c.path, {"x"}), hv::RunTimeFailure);
        else
            EXPECT_THROW(hv::Read_List_File(c.path), hv::RunTimeFailure);
        EXPECT_EQ(hv::Err().Number, c.number);
        hv::Err().Clear();
    }
}

} // namespace
