#include "reporting/model/ReportKinds.h"

#include "core/DateText.h"
#include "platform/Err.h"

#include <QDateTime>
#include <QHash>

namespace hv::report {

namespace {

const char* const kUrlSelect =
    "SELECT URL,DOMAIN_NAME,EXE_NAME,SEND_BITS,RECEIVED_BITS,START_TIME,STOP_TIME FROM "
    "URL_RPT_TBL WHERE USER_ID=";
const char* const kDomainSelect = "SELECT DOMAIN_NAME,COUNT(DOMAIN_NAME) FROM URL_RPT_TBL WHERE USER_ID=";
const char* const kProgramSelect = "SELECT PROGRAM_NAME,PRODUCT_NAME,PROGRAM_TITLE,PROGRAM_PATH,COMPANY_NAME,"
                                   "START_TIME,STOP_TIME FROM PROGRAM_RPT_TBL WHERE USER_ID=";
const char* const kDeviceSelect = "SELECT DEVICE,DEVICE_DESCRIPTION,DEVICE_LABEL,MANUFACTURER,START_TIME,"
                                  "STOP_TIME FROM DEVICE_RPT_TBL WHERE USER_ID=";
const char* const kEmailSelect = "SELECT FROM_ADDRESS,TO_ADDRESS,CC_ADDRESS,BCC_ADDRESS,SUBJECT,START_TIME,"
                                 "ATTACHMENT FROM EMAIL_RPT_TBL WHERE USER_ID=";
// An activity counts when it ended within the range; an e-mail is one instant and counts by its start.
const char* const kStopBefore = "' AND STOP_TIME<'";
const char* const kStartBefore = "' AND START_TIME<'";
const char* const kFromStart = " AND START_TIME>='";

std::vector<Column> Device_Columns() {
    return {{"Device", "Device Name", 4},         {"DeviceDesc", "Description", 2},
            {"DevcieLabel", "Device Label", 1.5}, {"Manufacturer", "Manufacturer", 1.5},
            {"StartTime", "Start Time", 1.5},     {"StopTime", "Stop Time", 1.5}};
}

std::vector<Column> Email_Columns(const char* timeKey, const char* timeHeading) {
    return {{"From Address", "From Address", 4}, {"To Address", "To Address", 1.5},
            {"CC Address", "CC Address", 1.5},   {"BCC Address", "BCC Address", 1.5},
            {"Subject", "Subject", 2.5},         {timeKey, timeHeading, 1.5},
            {"Attachments", "Attachments", 1.5}};
}

Filter Device_Filter(const char* entry, const char* basedOn, const char* tail, const char* deleteUser) {
    return {.entry = entry,
            .basedOn = basedOn,
            .sortBy = {},
            .sortTexts = {QStringLiteral("Device Name"), QStringLiteral("Manufaturer"),
                          QStringLiteral("Start Time")},
            .select = kDeviceSelect,
            .upperBound = kStopBefore,
            .tail = tail,
            .deleteUser = deleteUser,
            .columns = Device_Columns(),
            .denominator = 12};
}

const std::vector<Kind>& Kinds() {
    static const std::vector<Kind> kinds = {
        {.entry = "URL Reporting ",
         .checkCaption = "Enable URL Reporting",
         .bit = 2048,
         .title = "URL REPORT",
         .exportWord = "_Url_Rpt_Details",
         .deleteFirst = "DELETE FROM URL_RPT_TBL WHERE USER_ID=",
         .deleteUpper = "' AND STOP_TIME<='",
         .sortBy = {},
         .filters = {{.entry = "URL",
                      .basedOn = "URL Visited",
                      .sortBy = {QStringLiteral("URL"), QStringLiteral("Domain Name"),
                                 QStringLiteral("Start Time")},
                      .sortTexts = {QStringLiteral("URL Visited"), QStringLiteral("Domain Name"),
                                    QStringLiteral("Start Time")},
                      .select = kUrlSelect,
                      .upperBound = kStopBefore,
                      .tail = "' ORDER BY ",
                      .deleteUser = kFromStart,
                      .columns = {{"Url", "Url Visited", 4},
                                  {"Domain", "Domain", 2},
                                  {"Application", "Application Used", 2},
                                  {"SentBits", "Sent Bits", 1.5},
                                  {"ReceivedBits", "Received Bits", 1.5},
                                  {"StartTime", "Start Time", 1.5},
                                  {"StopTime", "Stop Time", 1.5}},
                      .denominator = 14},
                     {.entry = "DOMAIN",
                      .basedOn = "Domain Name",
                      .sortBy = {QStringLiteral("Domain Name")},
                      .sortTexts = {QStringLiteral("Domain Name")},
                      .select = kDomainSelect,
                      .upperBound = kStopBefore,
                      .tail = "' GROUP BY DOMAIN_NAME ORDER BY ",
                      .deleteUser = kFromStart,
                      .columns = {{"Url", "Domain Visited", 3}, {"Count", "Count", 1}},
                      .denominator = 4}}},
        {.entry = "Application Reporting",
         .checkCaption = "Enable Application Reporting",
         .bit = 4096,
         .title = "APPLICATION REPORT",
         .exportWord = "_App_Rpt_Details",
         .deleteFirst = "DELETE FROM PROGRAM_RPT_TBL WHERE USER_ID=",
         .deleteUpper = "' AND STOP_TIME<='",
         .sortBy = {QStringLiteral("Program Name"), QStringLiteral("Program Title"),
                    QStringLiteral("Company Name"), QStringLiteral("Start Time")},
         .filters = {{.entry = "Application Name",
                      .basedOn = "Application Name",
                      .sortBy = {},
                      .sortTexts = {QStringLiteral("Program Name"), QStringLiteral("Program Title"),
                                    QStringLiteral("Company Name"), QStringLiteral("Start Time")},
                      .select = kProgramSelect,
                      .upperBound = kStopBefore,
                      .tail = "' ORDER BY ",
                      .deleteUser = kFromStart,
                      .columns = {{"ProgramName", "Program Name", 4},
                                  {"ProductName", "Product Name", 1.5},
                                  {"ProductTitle", "Product Title", 1.5},
                                  {"ProgramPath", "Program Path", 2.5},
                                  {"CompanyName", "Company Name", 1.5},
                                  {"StartTime", "Start Time", 1.5},
                                  {"StopTime", "Stop Time", 1.5}},
                      .denominator = 14}}},
        {.entry = "Device Reporting",
         .checkCaption = "Enable Device Reporting",
         .bit = 8192,
         .title = "DEVICE REPORT",
         .exportWord = "_Device_Rpt_Details",
         .deleteFirst = "DELETE FROM DEVICE_RPT_TBL WHERE USER_ID=",
         .deleteUpper = "' AND STOP_TIME<='",
         .sortBy = {QStringLiteral("Device"), QStringLiteral("Manufacturer"), QStringLiteral("Start Time")},
         .filters = {Device_Filter("Floppy Drive", "Floppy", "' AND DEVICE_TYPE=0 ORDER BY ",
                                   " AND DEVICE_TYPE=0  AND START_TIME>='"),
                     Device_Filter("CD-ROM", "CD/DVD", "' AND DEVICE_TYPE=1 ORDER BY ",
                                   " AND DEVICE_TYPE=1  AND START_TIME>='"),
                     Device_Filter("USB", "USB", "' AND DEVICE_TYPE=2 ORDER BY ",
                                   " AND DEVICE_TYPE=2  AND START_TIME>='")}},
        {.entry = "Email Reporting",
         .checkCaption = "Enable Email Reporting",
         .bit = 16384,
         .title = "EMAIL REPORT",
         .exportWord = "_Email_Rpt_Details",
         .deleteFirst = "DELETE FROM EMAIL_RPT_TBL WHERE USER_ID=",
         .deleteUpper = "' AND START_TIME<='",
         .sortBy = {},
         .filters = {{.entry = "SMTP",
                      .basedOn = "SMTP",
                      .sortBy = {QStringLiteral("To Address"), QStringLiteral("Subject"),
                                 QStringLiteral("Send Time")},
                      .sortTexts = {QStringLiteral("To Address"), QStringLiteral("Subject"),
                                    QStringLiteral("Send Time")},
                      .select = kEmailSelect,
                      .upperBound = kStartBefore,
                      .tail = "' AND EMAIL_TYPE=0 ORDER BY ",
                      .deleteUser = " AND EMAIL_TYPE=0  AND START_TIME>='",
                      .columns = Email_Columns("SendTime", "Send Time"),
                      .denominator = 14},
                     {.entry = "POP3",
                      .basedOn = "POP3",
                      .sortBy = {QStringLiteral("From Address"), QStringLiteral("Subject"),
                                 QStringLiteral("Received Time")},
                      .sortTexts = {QStringLiteral("From Address"), QStringLiteral("Subject"),
                                    QStringLiteral("Received Time")},
                      .select = kEmailSelect,
                      .upperBound = kStartBefore,
                      .tail = "' AND EMAIL_TYPE=1 ORDER BY ",
                      .deleteUser = " AND EMAIL_TYPE=1  AND START_TIME>='",
                      .columns = Email_Columns("ReceivedTime", "Received Time"),
                      .denominator = 14}}},
    };
    return kinds;
}

QString Midnight(const QDate& date) {
    return QDateTime(date, QTime(0, 0)).toString(QLatin1String(kTimeFormat));
}

} // namespace

int Kind_Count() {
    return int(Kinds().size());
}

const Kind& Kind_At(int type) {
    if (type < 0 || type >= Kind_Count())
        Err().Raise(errnum::SubscriptOutOfRange);
    return Kinds()[size_t(type)];
}

const Filter& Filter_At(int type, int filter) {
    const Kind& kind = Kind_At(type);
    if (filter < 0 || filter >= int(kind.filters.size()))
        Err().Raise(errnum::SubscriptOutOfRange);
    return kind.filters[size_t(filter)];
}

QString Sort_Column(const QString& caption) {
    static const QHash<QString, QString> columns = {
        {QStringLiteral("Domain Name"), QStringLiteral("DOMAIN_NAME")},
        {QStringLiteral("Start Time"), QStringLiteral("START_TIME")},
        {QStringLiteral("Send Time"), QStringLiteral("START_TIME")},
        {QStringLiteral("Received Time"), QStringLiteral("START_TIME")},
        {QStringLiteral("Program Name"), QStringLiteral("PROGRAM_NAME")},
        {QStringLiteral("Program Title"), QStringLiteral("PROGRAM_TITLE")},
        {QStringLiteral("Company Name"), QStringLiteral("COMPANY_NAME")},
        {QStringLiteral("Device"), QStringLiteral("DEVICE")},
        {QStringLiteral("Manufacturer"), QStringLiteral("MANUFACTURER")},
        {QStringLiteral("From Address"), QStringLiteral("FROM_ADDRESS")},
        {QStringLiteral("To Address"), QStringLiteral("TO_ADDRESS")},
        {QStringLiteral("Subject"), QStringLiteral("SUBJECT")},
    };
    return columns.value(caption, caption);
}

Sql Report_Query(int type, int filter, long userId, const QDate& start, const QDate& stop,
                 const QString& sortColumn, bool descending) {
    const Filter& f = Filter_At(type, filter);
    Sql sql(f.select);
    sql << num(userId) << kFromStart << txt(Midnight(start)) << f.upperBound << txt(Midnight(stop.addDays(1)))
        << f.tail << ident(sortColumn) << (descending ? " DESC" : " ASC");
    return sql;
}

Sql Report_Delete(int type, int filter, long userId, const QDate& start, const QDate& stop) {
    const Kind& kind = Kind_At(type);
    const Filter& f = Filter_At(type, filter);
    Sql sql(kind.deleteFirst);
    sql << num(userId) << f.deleteUser << txt(Midnight(start)) << kind.deleteUpper << txt(Midnight(stop))
        << "'";
    return sql;
}

QString Based_On_Text(int type, int filter) {
    return QLatin1String(Filter_At(type, filter).basedOn);
}

QString Sort_Text(int type, int filter, int sort) {
    const QStringList& texts = Filter_At(type, filter).sortTexts;
    if (sort < 0 || sort >= texts.size())
        Err().Raise(errnum::SubscriptOutOfRange);
    return texts[sort];
}

QString Order_Text(int order) {
    return order == 1 ? QStringLiteral("Decending") : QStringLiteral("Ascending");
}

QStringList Criteria_Lines(int type, int filter, const QDate& start, const QDate& stop, int sort, int order) {
    return {(QStringLiteral("REPORT BASED ON     : ") + Based_On_Text(type, filter)).toUpper(),
            (QStringLiteral("REPORTING PERIOD   : ") + Short_Date(start) + QStringLiteral(" To ") +
             Short_Date(stop))
                .toUpper(),
            (QStringLiteral("SORT BY                     : ") + Sort_Text(type, filter, sort)).toUpper(),
            (QStringLiteral("SORT ORDER              : ") + Order_Text(order)).toUpper()};
}

} // namespace hv::report
