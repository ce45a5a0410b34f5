#include "admin/model/CopySettings.h"

#include "core/clsLog.h"
#include "platform/Err.h"
#include "store/Bits.h"
#include "store/modDBFunctions.h"

#include <QRegularExpression>
#include <QTime>

namespace hv {

namespace {

// How often a long list lets the window breathe.
constexpr long kRowsPerBreath = 1000;

void Breathe_Now_And_Then(const CopyContext& ctx, long row) {
    if (ctx.breathe && row % kRowsPerBreath == 0)
        ctx.breathe();
}

struct ListTable {
    const char* table;
    const char* column;
};

// One list: the destination's rows go first, on a connection of their own; the source's values then go
// in one transaction. A failure between the two leaves the destination's list empty.
void Copy_List(const CopyContext& ctx, long source, long destination, const ListTable& list) {
    const QString table = QLatin1String(list.table);
    const QString column = QLatin1String(list.column);
    Remove_User_Rows(destination, table);
    ResultTable values;
    long rows = 0;
    if (!Get_List_Items(column, table, ctx.computerId, source, values, rows))
        return;
    StoreBatch batch;
    if (batch.Open() == 0)
        return;
    try {
        for (long i = 1; i <= rows; ++i) {
            Add_List_Item(batch.Handle(), batch.result, column, table, values.Text(int(i), 0), ctx.computerId,
                          destination);
            Breathe_Now_And_Then(ctx, i);
        }
    } catch (const RunTimeFailure&) {
        Report_Error();
    }
    batch.Close();
}

bool Copy_List_Feature(const CopyContext& ctx, long source, long destination, bool sourceBit,
                       std::initializer_list<ListTable> lists, long bit) {
    for (const ListTable& list : lists)
        Copy_List(ctx, source, destination, list);
    Set_Feature_Bit(sourceBit, bit, ctx.computerId, destination);
    return true;
}

// The port rows of one kind, each written on a connection of its own.
void Copy_Ports(const CopyContext& ctx, long kind, long source, long destination) {
    ResultTable ports;
    long rows = 0;
    if (!Get_Ports(kind, ctx.computerId, source, ports, rows))
        return;
    try {
        for (long i = 1; i <= rows; ++i) {
            const int r = int(i);
            Add_Port(long(ports.Long(r, 0)), long(ports.Long(r, 1)), ports.Text(r, 2), ctx.computerId,
                     destination);
            Breathe_Now_And_Then(ctx, i);
        }
    } catch (const RunTimeFailure&) {
        Report_Error();
    }
}

// The schedules of one scheduler. Copied rows carry sub-type 1 and their times with seconds, whichever
// scheduler they belong to.
void Copy_Schedules(const CopyContext& ctx, long family, long source, long destination) {
    Remove_User_Schedules(family, destination);
    ResultTable schedules;
    long rows = 0;
    if (!Get_Schedules(family, ctx.computerId, source, schedules, rows))
        return;
    try {
        ResultTable added;
        for (long i = 1; i <= rows; ++i) {
            const int r = int(i);
            Add_Schedule(family, 1, long(schedules.Long(r, 1)), long(schedules.Long(r, 4)),
                         long(schedules.Long(r, 5)), Copied_Time_Text(schedules.Text(r, 2)),
                         Copied_Time_Text(schedules.Text(r, 3)), ctx.computerId, destination, added);
        }
    } catch (const RunTimeFailure&) {
        Report_Error();
    }
}

constexpr ListTable kBlackList{"BL_TBL", "BL_URL"};
constexpr ListTable kWhiteList{"WL_TBL", "WL_URL"};
constexpr ListTable kBypassList{"BYPASS_EXE_TBL", "BYPASS_EXE"};

} // namespace

bool Copy_Website_Filter(const CopyContext& ctx, long source, long destination, bool sourceBit) {
    return Copy_List_Feature(ctx, source, destination, sourceBit, {kBlackList, kWhiteList},
                             FEATURE_URL_FILTER);
}

bool Copy_File_Filter(const CopyContext& ctx, long source, long destination, bool sourceBit) {
    return Copy_List_Feature(ctx, source, destination, sourceBit, {{"FILE_TBL", "FILE_EXTN"}},
                             FEATURE_FILE_FILTER);
}

bool Copy_SMTP_Filter(const CopyContext& ctx, long source, long destination, bool sourceBit) {
    return Copy_List_Feature(ctx, source, destination, sourceBit, {{"SMTP_TBL", "SMTP_EMAIL"}},
                             FEATURE_SMTP_FILTER);
}

bool Copy_POP3_Filter(const CopyContext& ctx, long source, long destination, bool sourceBit) {
    return Copy_List_Feature(ctx, source, destination, sourceBit, {{"POP3_TBL", "POP3_EMAIL"}},
                             FEATURE_POP3_FILTER);
}

bool Copy_EXE_Blocker(const CopyContext& ctx, long source, long destination, bool sourceBit) {
    return Copy_List_Feature(ctx, source, destination, sourceBit, {{"EXE_TBL", "EXE_NAME"}},
                             FEATURE_EXE_BLOCKER);
}

bool Copy_Window_Blocker(const CopyContext& ctx, long source, long destination, bool sourceBit) {
    return Copy_List_Feature(ctx, source, destination, sourceBit, {{"WINDOW_TBL", "WINDOW_TITLE"}},
                             FEATURE_WINDOW_BLOCKER);
}

bool Copy_Port_Filter(const CopyContext& ctx, long source, long destination, bool sourceBit) {
    // Filter rows lie below 60000 and blocking rows above it; a row at 60000 itself is neither and stays
    // behind.
    Remove_User_Rows(destination, QStringLiteral("PORT_TBL"));
    Copy_Ports(ctx, 0, source, destination);
    Copy_Ports(ctx, 1, source, destination);
    Set_Feature_Bit(sourceBit, FEATURE_PORT_FILTER, ctx.computerId, destination);
    return true;
}

bool Copy_Internet_Scheduler(const CopyContext& ctx, long source, long destination, bool sourceBit) {
    Copy_Schedules(ctx, 1, source, destination);
    long onOff = 0;
    const bool haveOnOff = Get_Internet_On_Off(ctx.computerId, source, onOff);
    if (sourceBit) {
        Set_Schedule_For(2, ctx.computerId, destination);
        Set_Feature_Bit(true, FEATURE_INTERNET_SCHEDULER, ctx.computerId, destination);
    } else {
        // A source whose state could not be read does not turn the destination's internet off.
        if (haveOnOff)
            Set_Internet_On_Off(onOff, ctx.computerId, destination);
        Set_Schedule_For(1, ctx.computerId, destination);
        Set_Feature_Bit(false, FEATURE_INTERNET_SCHEDULER, ctx.computerId, destination);
    }
    return true;
}

bool Copy_Application_Scheduler(const CopyContext& ctx, long source, long destination, bool sourceBit) {
    Copy_Schedules(ctx, 2, source, destination);
    Set_Feature_Bit(sourceBit, FEATURE_APP_SCHEDULER, ctx.computerId, destination);
    return true;
}

bool Copy_General_Options(const CopyContext& ctx, long source, long destination) {
    Remove_User_Rows(destination, QLatin1String(kBypassList.table));
    ResultTable messages;
    long rows = 0;
    if (Get_User_Messages(source, messages, rows)) {
        try {
            Copy_User_Messages(destination, long(messages.Long(1, 0)), messages.Text(1, 1),
                               messages.Text(1, 2), long(messages.Long(1, 3)), messages.Text(1, 4));
        } catch (const RunTimeFailure&) {
            Report_Error();
        }
    }
    // Installation-wide values: written back as they were read, never as what a failed read left.
    long options = 0;
    if (Get_Client_Options(options))
        Set_Client_Options(options);
    Copy_List(ctx, source, destination, kBypassList);
    QString password;
    if (Get_Password(password))
        Set_Password(password);
    return true;
}

bool Copy_Device_Settings(const CopyContext& ctx, long source, long destination) {
    long lock = 0;
    if (Get_Device_Lock(ctx.computerId, source, lock))
        Copy_Device_Lock(lock, ctx.computerId, destination);
    return true;
}

const std::vector<CopyFeature>& Copy_Features() {
    static const std::vector<CopyFeature> features{
        {.text = QStringLiteral("WebSite Filter"),
         .sourceBit = FEATURE_URL_FILTER,
         .copy = Copy_Website_Filter,
         .offered = true},
        {.text = QStringLiteral("File Filter"),
         .sourceBit = FEATURE_FILE_FILTER,
         .copy = Copy_File_Filter,
         .offered = true},
        {.text = QStringLiteral("SMTP Filter"),
         .sourceBit = FEATURE_SMTP_FILTER,
         .copy = Copy_SMTP_Filter,
         .offered = true},
        {.text = QStringLiteral("POP3 Filter"),
         .sourceBit = FEATURE_POP3_FILTER,
         .copy = Copy_POP3_Filter,
         .offered = true},
        {.text = QStringLiteral("Port Blocking And Filtering"),
         .sourceBit = FEATURE_PORT_FILTER,
         .copy = Copy_Port_Filter,
         .offered = true},
        {.text = QStringLiteral("Internet Scheduler"),
         .sourceBit = FEATURE_INTERNET_SCHEDULER,
         .copy = Copy_Internet_Scheduler,
         .offered = true},
        {.text = QStringLiteral("EXE Blocker"),
         .sourceBit = FEATURE_EXE_BLOCKER,
         .copy = Copy_EXE_Blocker,
         .offered = true},
        {.text = QStringLiteral("Window Blocker"),
         .sourceBit = FEATURE_WINDOW_BLOCKER,
         .copy = Copy_Window_Blocker,
         .offered = true},
        {.text = QStringLiteral("Application Scheduler"),
         .sourceBit = FEATURE_APP_REPORTING,
         .copy = Copy_Application_Scheduler,
         .offered = true},
        {.text = QStringLiteral("General Options"),
         .sourceBit = 0,
         .copy = [](const CopyContext& ctx, long source, long destination,
                    bool) { return Copy_General_Options(ctx, source, destination); },
         .offered = true},
        {.text = QStringLiteral("Device Settings"),
         .sourceBit = 0,
         .copy = [](const CopyContext& ctx, long source, long destination,
                    bool) { return Copy_Device_Settings(ctx, source, destination); },
         .offered = false},
    };
    return features;
}

const CopyFeature* Find_Copy_Feature(const QString& text) {
    for (const CopyFeature& f : Copy_Features())
        if (f.text == text)
            return &f;
    return nullptr;
}

bool Copy_Settings(const CopyContext& ctx, const QString& sourceName, const QStringList& features,
                   const QStringList& destinations) {
    long source = 0;
    if (!Get_User_Id(source, sourceName))
        return false;
    bool result = true;
    for (const QString& text : features) {
        const CopyFeature* feature = Find_Copy_Feature(text);
        if (!feature)
            continue;
        const bool sourceBit =
            feature->sourceBit != 0 && Is_Feature_Bit_Set(ctx.computerId, source, feature->sourceBit);
        for (const QString& name : destinations) {
            long destination = 0;
            if (!Get_User_Id(destination, name)) {
                result = false;
                continue;
            }
            // Names that differ only in case can lead back to the source: its rows would be deleted
            // before they were read.
            if (destination == source)
                continue;
            result = feature->copy(ctx, source, destination, sourceBit);
        }
    }
    return result;
}

QString Copied_Time_Text(const QString& stored) {
    static const QRegularExpression time(
        QStringLiteral("^\\s*(\\d{1,2}):(\\d{1,2})(?::(\\d{1,2}))?\\s*([AaPp][Mm])?\\s*$"));
    const auto m = time.match(stored);
    if (!m.hasMatch())
        Err().Raise(errnum::TypeMismatch);
    int hour = m.captured(1).toInt();
    const int minute = m.captured(2).toInt();
    const int second = m.capturedLength(3) > 0 ? m.captured(3).toInt() : 0;
    if (m.capturedLength(4) > 0) {
        if (hour < 1 || hour > 12)
            Err().Raise(errnum::TypeMismatch);
        const bool pm = m.captured(4).front().toUpper() == u'P';
        hour = hour % 12 + (pm ? 12 : 0);
    }
    const QTime t(hour, minute, second);
    if (!t.isValid())
        Err().Raise(errnum::TypeMismatch);
    return t.toString(QStringLiteral("HH:mm:ss"));
}

} // namespace hv
