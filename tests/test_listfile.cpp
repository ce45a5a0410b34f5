// The list text file: how fields are cut from a file and how lists are written.
#include "filters/ListFile.h"
#include "platform/Err.h"

#include <QDir>
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

// Cases print as their names, which keeps the test listing readable.
void PrintTo(const FieldCase& c, std::ostream* os) {
    *os << c.name;
}

class ListFileFields : public ::testing::TestWithParam<FieldCase> {};

TEST_P(ListFileFields, CutsFieldsAsTheImportReadsThem) {
    EXPECT_EQ(Read_List_Fields(GetParam().bytes), GetParam().fields);
}

TEST_P(ListFileFields, EstimateLeavesRoomForEveryField) {
    // The import makes room in the list from the estimate; falling short would only cost speed, but every
    // shape of file should be covered.
    EXPECT_GE(hv::ListFieldReader(GetParam().bytes).Field_Estimate(), GetParam().fields.size());
}

INSTANTIATE_TEST_SUITE_P(
    ListFile, ListFileFields,
    ::testing::Values(FieldCase{"crlf", "a.com\r\nb.com\r\n", {"a.com", "b.com"}},
                      FieldCase{"lf", "a.com\nb.com\n", {"a.com", "b.com"}},
                      FieldCase{"lone_cr", "a.com\rb.com", {"a.com", "b.com"}},
                      FieldCase{"last_line_without_end", "a.com\r\nb.com", {"a.com", "b.com"}},
                      FieldCase{"comma_splits_a_line", ".zip,.exe\r\n", {".zip", ".exe"}},
                      FieldCase{"leading_blanks_skipped", "   x.com,\t y.com\r\n", {"x.com", "y.com"}},
                      FieldCase{"trailing_blanks_kept_for_the_caller", "x.com  \r\n", {"x.com  "}},
                      FieldCase{
                          "quoted_field_keeps_comma", "\"Notepad, Calc\",z\r\n", {"Notepad, Calc", "z"}},
                      FieldCase{"text_after_closing_quote_dropped", "\"ab\"cd,e\r\n", {"ab", "e"}},
                      FieldCase{"quoted_field_spans_line_end", "\"a\r\nb\",c", {"a\r\nb", "c"}},
                      FieldCase{"empty_line_is_empty_field", "a\r\n\r\nb\r\n", {"a", "", "b"}},
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

TEST(ListFile, DecodesUtf8AndFallsBackToWindows1252) {
    // "café" in UTF-8, with and without a byte order mark.
    EXPECT_EQ(hv::Decode_List_Text(QByteArray("caf\xc3\xa9")), QStringLiteral(u"café"));
    EXPECT_EQ(hv::Decode_List_Text(QByteArray("\xef\xbb\xbf"
                                              "caf\xc3\xa9")),
              QStringLiteral(u"café"));
    // The same word written by an older console in Windows-1252, and the code page's own high letters.
    EXPECT_EQ(hv::Decode_List_Text(QByteArray("caf\xe9")), QStringLiteral(u"café"));
    EXPECT_EQ(hv::Decode_List_Text(QByteArray("\x80\x8a\x9f\xa0\xff")), QStringLiteral(u"€ŠŸ\u00a0ÿ"));
    // Plain ASCII is the same either way.
    EXPECT_EQ(hv::Decode_List_Text(QByteArray("a.com\r\n")), QStringLiteral("a.com\r\n"));
    // One stray byte anywhere makes the whole file Windows-1252, even where a part would read as UTF-8.
    EXPECT_FALSE(hv::ListFieldReader(QByteArray("caf\xc3\xa9\r\nna\xefve")).Is_Utf8());
    EXPECT_EQ(Read_List_Fields(QByteArray("caf\xc3\xa9\r\nna\xefve")),
              (QStringList{QStringLiteral(u"cafÃ©"), QStringLiteral(u"naïve")}));
}

TEST(ListFile, ExportWritesCrLfLinesInUtf8WithoutBom) {
    EXPECT_EQ(hv::Export_Bytes({"a.com", QStringLiteral(u"caf\u00e9"), "x, y"}),
              QByteArray("a.com\r\ncaf\xc3\xa9\r\nx, y\r\n"));
    EXPECT_EQ(hv::Export_Bytes({}), QByteArray());
}

TEST(ListFile, ExportedCommaComesBackAsTwoFields) {
    QTemporaryDir dir;
    const QString path = dir.filePath("list.txt");
    hv::Write_List_File(path, {"Notepad, Calc", "x"});
    EXPECT_EQ(Read_List_Fields(hv::Read_List_File(path)), (QStringList{"Notepad", "Calc", "x"}));
}

TEST(ListFile, WriteReplacesAndFailuresAreRunTimeErrors) {
    QTemporaryDir dir;
    const QString path = dir.filePath("list.txt");
    hv::Write_List_File(path, {"first", "second", "third"});
    hv::Write_List_File(path, {"only"});
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    EXPECT_EQ(f.readAll(), QByteArray("only\r\n"));

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
