// The report kinds' criteria and sort columns, and the HTML fragment: its exact bytes, and the buffered
// writer against a write of every piece at the file's end on its own.
#include "reporting/model/ReportKinds.h"
#include "reporting/model/clsHTML.h"
#include "testing/StoreTest.h"
#include "testing/TestSupport.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

using namespace hv;
using hv::testing::File_Bytes;
using hv::testing::Raised;

TEST(ReportKinds, SortCaptionsMapToColumnsAndCriteriaTextsKeepTheirSpelling) {
    // clang-format off
    const std::pair<const char*, const char*> cases[] = {
        {"URL", "URL"}, {"Domain Name", "DOMAIN_NAME"}, {"Start Time", "START_TIME"}, {"Send Time", "START_TIME"},
        {"Received Time", "START_TIME"}, {"Program Title", "PROGRAM_TITLE"}, {"Manufacturer", "MANUFACTURER"},
        {"From Address", "FROM_ADDRESS"}, {"Subject", "SUBJECT"},
    };
    // clang-format on
    for (const auto& [caption, column] : cases)
        EXPECT_EQ(report::Sort_Column(QLatin1String(caption)), QLatin1String(column)) << caption;
    // The criteria texts keep their spelling.
    EXPECT_EQ(report::Sort_Text(2, 2, 1), QStringLiteral("Manufaturer"));
    EXPECT_EQ(report::Based_On_Text(2, 1), QStringLiteral("CD/DVD"));
    EXPECT_EQ(report::Sort_Text(0, 0, 0), QStringLiteral("URL Visited"));
    EXPECT_EQ(report::Order_Text(1), QStringLiteral("Decending"));
    EXPECT_EQ(report::Order_Text(0), QStringLiteral("Ascending"));
    EXPECT_EQ(Raised([] { report::Filter_At(1, 1); }), errnum::SubscriptOutOfRange);
    EXPECT_EQ(Raised([] { report::Sort_Text(0, 1, 1); }), errnum::SubscriptOutOfRange);
}

// The sheets' columns always share the whole list.
TEST(ReportKinds, ColumnSharesAddUpToTheirDenominator) {
    for (int t = 0; t < report::Kind_Count(); ++t) {
        for (size_t f = 0; f < report::Kind_At(t).filters.size(); ++f) {
            const report::Filter& filter = report::Filter_At(t, int(f));
            double sum = 0;
            for (const report::Column& c : filter.columns)
                sum += c.share;
            EXPECT_DOUBLE_EQ(sum, filter.denominator) << t << "/" << f;
        }
    }
}

// A sheet of the rows it is given.
class Sheet final : public ReportSheet {
public:
    struct Line {
        QString text;
        QStringList subs;
        bool bold;
    };
    Sheet(int columns, std::vector<Line> lines) : m_columns(columns), m_lines(std::move(lines)) {}
    int Rows() const override { return int(m_lines.size()); }
    int Columns() const override { return m_columns; }
    SheetRow Row(int row) const override {
        const Line& r = m_lines[size_t(row - 1)];
        return {&r.text, r.subs.isEmpty() ? nullptr : &r.subs, r.bold};
    }

private:
    int m_columns;
    std::vector<Line> m_lines;
};

// Each piece written at the file's end by its own unbuffered write, as the fragment has always been made.
class PieceByPiece final : public HtmlPieces {
public:
    explicit PieceByPiece(const QString& path) : m_file(path) {
        m_file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered);
    }
    void Put(QLatin1StringView markup) override { m_file.write(markup.data(), markup.size()); }
    void Put(QStringView text) override { m_file.write(text.toUtf8()); }

private:
    QFile m_file;
};

class ReportHtml : public ::testing::Test {
protected:
    QTemporaryDir dir;
    ScriptedPlatform platform{dir.path()};
    PlatformScope scope{platform};
    QString Path(const char* name) const { return dir.filePath(QLatin1String(name)); }
};

TEST_F(ReportHtml, TwoColumnSheetIsWrittenByteForByteBehindWhatTheFileHolds) {
    platform.now = QDateTime(QDate(2026, 1, 15), QTime(14, 5, 9));
    const Sheet sheet(2, {{"DOMAIN", {}, true}, {"  ", {"  "}, false}, {"a&b<c>", {""}, false}});
    const QString path = Path("r.html");
    hv::testing::Write_File(path, "before");
    clsHTML().SaveListViewToFile(sheet, path, QString(), QStringLiteral("HTML"), QStringLiteral("RPT"));
    const QByteArray expected =
        "before\r\n<H2>&nbsp;</H2>\r\n<div align=\"left\">\r\n<table border=\"1\" cellspacing=\"0\" "
        "cellpadding=\"0\" style=\"border-collapse: collapse; font-family: Microsoft Sans Serif; "
        "font-size:10pt; "
        "padding-left:10; padding-right:5\" bordercolor=\"#FFFFFF\" width=\"100%\">\r\n</tr>\r\n"
        "\r\n<tr>\r\n<td bgcolor=\"#FFDBBF\"><b>DOMAIN</b></td><td "
        "bgcolor=\"#FFDBBF\"><b>&nbsp;</b></td>\r\n</tr>"
        "\r\n<tr>\r\n<td  bgcolor=\"#FFFFFF\">&nbsp;</td><td  bgcolor=\"#FFFFFF\">  </td>\r\n</tr>"
        "\r\n<tr>\r\n<td bgcolor=\"#FFDBBF\">a&b<c></td><td bgcolor=\"#FFDBBF\">&nbsp;</td>\r\n</tr>"
        "\r\n<tr><td>Report Taken @ 1/15/2026 2:05:09 PM</td>\r\n</tr>\r\n</table>\r\n\r\n</div>";
    EXPECT_EQ(File_Bytes(path), expected);
}

TEST_F(ReportHtml, BufferedWriterWritesWhatPieceByPieceWritesOnAnySheet) {
    std::vector<Sheet::Line> rows;
    for (int i = 0; i < 3500; ++i)
        rows.push_back({i % 7 == 0 ? QString() : QStringLiteral("http://h%1.example/ü?x=1&y=2").arg(i),
                        {QStringLiteral("h%1.example").arg(i), QString(), QStringLiteral("%1").arg(i * 31)},
                        i < 8});
    const Sheet sheet(4, std::move(rows));
    const QString buffered = Path("buffered.html");
    const QString pieces = Path("pieces.html");
    const QString stamp = QStringLiteral("1/15/2026 10:00:00 AM");
    for (int round = 0; round < 2; ++round) { // the second fragment goes behind the first
        clsHTML().SaveListViewToFile(sheet, buffered, QString(), QString(), QString());
        PieceByPiece out(pieces);
        clsHTML::Sheet_Pieces(sheet, stamp, out);
    }
    clsHTML().SaveReportFooter(buffered);
    {
        PieceByPiece out(pieces);
        clsHTML::Footer_Pieces(out);
    }
    const QByteArray a = File_Bytes(buffered);
    EXPECT_GT(a.size(), 1 << 20); // more than one block of the buffer
    EXPECT_TRUE(a == File_Bytes(pieces));
    EXPECT_TRUE(a.endsWith(
        "<tr><td colspan=\"100%\"></td></tr>\r\n<tr><td></td></tr>\r\n\r\n</table>\r\n\r\n</div>"));
}

TEST_F(ReportHtml, UnwritableNamesRaiseTheFileErrors) {
    const Sheet sheet(1, {{"x", {}, false}});
    EXPECT_EQ(Raised([&] { clsHTML().SaveListViewToFile(sheet, QString(), {}, {}, {}); }),
              errnum::BadFileNameOrNumber);
    EXPECT_EQ(Raised([&] { clsHTML().SaveListViewToFile(sheet, dir.path(), {}, {}, {}); }),
              errnum::PathFileAccessError);
}

} // namespace
