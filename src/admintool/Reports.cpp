// reports export: usage rows as CSV or as the report page's HTML fragment, streamed from the store, so a
// file of ten million rows is written in the memory of a few rows.
#include "admintool/AdminStore.h"
#include "admintool/Cli.h"
#include "core/BufferedFile.h"
#include "core/Csv.h"
#include "core/DateText.h"
#include "reporting/model/ReportKinds.h"
#include "reporting/model/clsHTML.h"
#include "store/modDB.h"

#include <QDate>

namespace hv::admin {

namespace {

// The report types by their names here, in the order of the reporting page's type list.
const char* const kTypes[] = {"url", "application", "device", "email"};

int Type_Of(const Invocation& inv) {
    const QString name = inv.Need(QStringLiteral("--type"));
    for (int t = 0; t < int(std::size(kTypes)); ++t)
        if (name == QLatin1String(kTypes[t]))
            return t;
    throw UsageError{
        QStringLiteral("unknown report type '%1' (url, application, device or email)").arg(name)};
}

int Filter_Of(const Invocation& inv, int type) {
    const QString name = inv.Option(QStringLiteral("--filter")).trimmed();
    if (name.isEmpty())
        return 0;
    const report::Kind& kind = report::Kind_At(type);
    QStringList names;
    for (int f = 0; f < int(kind.filters.size()); ++f) {
        const QString entry = QLatin1String(kind.filters[size_t(f)].entry).trimmed();
        if (entry.compare(name, Qt::CaseInsensitive) == 0)
            return f;
        names.append(entry);
    }
    throw UsageError{QStringLiteral("unknown filter '%1' (%2)").arg(name, names.join(QStringLiteral(", ")))};
}

QDate Date_Of(const Invocation& inv, const QString& option) {
    const QDate d = QDate::fromString(inv.Need(option), QStringLiteral("yyyy-MM-dd"));
    if (!d.isValid())
        throw UsageError{option + QStringLiteral(" needs a date as yyyy-MM-dd")};
    return d;
}

struct Selection {
    int type;
    int filter;
    QDate from, to;
    const report::Filter* columns;
};

QString First_Sort_Caption(int type, int filter) {
    const QStringList& captions = !report::Filter_At(type, filter).sortBy.isEmpty()
                                      ? report::Filter_At(type, filter).sortBy
                                      : report::Kind_At(type).sortBy;
    return captions.isEmpty() ? QString() : captions.front();
}

bool Stream(const Selection& s, long user, const RowSink& row, long& rows) {
    const QString caption = First_Sort_Caption(s.type, s.filter);
    return Run_Query_Rows(
        report::Report_Query(s.type, s.filter, user, s.from, s.to, report::Sort_Column(caption), false), row,
        rows);
}

void Export_Csv(const Selection& s, const std::vector<UserRow>& users, const QString& path) {
    BufferedFile out(path, BufferedFile::Replace);
    const int columns = int(s.columns->columns.size());
    std::vector<QString> record(size_t(columns) + 1);
    record[0] = QStringLiteral("USER");
    for (int c = 0; c < columns; ++c)
        record[size_t(c) + 1] = QLatin1String(s.columns->columns[size_t(c)].heading);
    Csv_Record(out, record.data(), int(record.size()));
    for (const UserRow& user : users) {
        record[0] = user.name;
        long rows = 0;
        Ensure(Stream(
            s, user.id,
            [&](const QString* cells, int count) {
                for (int c = 0; c < columns; ++c)
                    record[size_t(c) + 1] = c < count ? cells[c] : QString();
                Csv_Record(out, record.data(), int(record.size()));
            },
            rows));
    }
    out.Close();
}

// The sheet's pieces go to the export file.
class Pieces final : public HtmlPieces {
public:
    explicit Pieces(BufferedFile& file) : m_file(file) {}
    void Put(QLatin1StringView markup) override { m_file.Put(markup); }
    void Put(QStringView text) override { m_file.Put(text); }

private:
    BufferedFile& m_file;
};

// One user's sheet as the report page shows and exports it: title, criteria, headings, rows and a closing
// empty row, numbered over the whole sheet so the colours alternate as the page's do.
void Html_Sheet(const Selection& s, const UserRow& user, Pieces& out) {
    const int columns = int(s.columns->columns.size());
    int number = 0;
    const QStringList none;
    auto put = [&](const QString& text, const QStringList& subs, bool bold) {
        clsHTML::Sheet_Row(out, ++number, SheetRow{&text, &subs, bold}, columns);
    };
    clsHTML::Sheet_Begin(out);
    put(QLatin1String(report::Kind_At(s.type).title), none, true);
    put(QString(), none, false);
    for (const QString& line : report::Criteria_Lines(s.type, s.filter, s.from, s.to, 0, 0))
        put(line, none, true);
    put(QString(), none, false);
    QStringList headings;
    for (size_t c = 1; c < s.columns->columns.size(); ++c)
        headings.append(QLatin1String(s.columns->columns[c].heading));
    put(QLatin1String(s.columns->columns.front().heading), headings, true);
    long rows = 0;
    QStringList subs;
    Ensure(Stream(
        s, user.id,
        [&](const QString* cells, int count) {
            subs.clear();
            for (int c = 1; c < std::min(count, columns); ++c)
                subs.append(cells[c]);
            put(count > 0 ? cells[0] : QString(), subs, false);
        },
        rows));
    put(QString(), none, false);
    clsHTML::Sheet_End(out, columns, General_Date(QDateTime::currentDateTime()));
}

int Reports_Export(const Invocation& inv) {
    Selection s{};
    s.type = Type_Of(inv);
    s.filter = Filter_Of(inv, s.type);
    s.from = Date_Of(inv, QStringLiteral("--from"));
    s.to = Date_Of(inv, QStringLiteral("--to"));
    s.columns = &report::Filter_At(s.type, s.filter);
    const QString format = inv.Option(QStringLiteral("--format"), QStringLiteral("csv"));
    if (format != QLatin1String("csv") && format != QLatin1String("html"))
        throw UsageError{QStringLiteral("unknown format '%1' (csv or html)").arg(format)};
    std::vector<UserRow> users;
    if (inv.options.contains(QStringLiteral("--user")))
        users.push_back(Find_User(inv.Option(QStringLiteral("--user"))));
    else
        users = Users();
    // Rows stream through; the store's page cache is all that grows, so it is kept small.
    Set_Store_Cache_Kib(8192);
    if (format == QLatin1String("csv")) {
        Export_Csv(s, users, inv.words[0]);
    } else {
        BufferedFile file(inv.words[0], BufferedFile::Replace);
        Pieces out(file);
        for (const UserRow& user : users)
            Html_Sheet(s, user, out);
        file.Close();
    }
    return kExitOk;
}

} // namespace

void Add_Report_Commands(std::vector<Command>& into) {
    into.push_back(
        {QStringLiteral("reports"),
         QStringLiteral("export"),
         QStringLiteral("reports export --type url|application|device|email [--filter F] [--user U] --from "
                        "yyyy-MM-dd --to yyyy-MM-dd --format csv|html FILE"),
         QStringLiteral(
             "Writes the usage rows the report page would show for the dates (both whole days) to FILE, "
             "replacing it: CSV (RFC 4180, a heading record, the user's name in the first field) or "
             "the report page's HTML fragment, one sheet a user. Without --user every user's rows "
             "are written. F is one of the type's filters (default the first: URL, Application "
             "Name, ...). Rows stream from the store: any number of them fits in little memory."),
         {QStringLiteral("--type"), QStringLiteral("--filter"), QStringLiteral("--user"),
          QStringLiteral("--from"), QStringLiteral("--to"), QStringLiteral("--format")},
         {},
         1,
         1,
         Reports_Export});
}

} // namespace hv::admin
