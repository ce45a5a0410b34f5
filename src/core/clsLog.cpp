#include "core/clsLog.h"

#include "platform/Err.h"
#include "platform/Platform.h"

#include <QDateTime>
#include <new>

namespace hv {

namespace {

std::unique_ptr<clsLog>& The_Logger() {
    static std::unique_ptr<clsLog> logger;
    return logger;
}

// The run-time error as both error lines spell it.
QString Error_Part() {
    const ErrObject& e = Err();
    return QStringLiteral(": ErrNo=") + QString::number(e.Number) + QStringLiteral(": ErrDesc=") +
           e.Description + QStringLiteral(": ErrSrc=") + e.Source;
}

QString Show_Text(const QString& strData) {
    return Err().Number != 0 ? strData + Error_Part() : strData;
}

constexpr int kLineWidth = 80;

} // namespace

clsLog::clsLog() {
    strFileName = platform().App_Path() + u'/' + platform().App_Exe_Name() + QStringLiteral(".log");
}

clsLog::~clsLog() = default; // the file closes with its object

void clsLog::Start_Logging(const QString& fileName) {
    strFileName = fileName;
    Open_Log_File();
}

void clsLog::Open_Log_File() {
    m_file.reset();
    // Read/write without truncation: an existing log is continued, a missing one created. Every record is
    // one positioned write that goes straight to the file.
    auto file = std::make_unique<QFile>(strFileName);
    if (!file->open(QIODevice::ReadWrite | QIODevice::Unbuffered))
        Err().Raise(errnum::PathFileAccessError);
    m_file = std::move(file);
}

QString clsLog::Format_Time(const QDateTime& t) {
    static const char* const months[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                         "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    const QDate d = t.date();
    const QTime tm = t.time();
    if (!d.isValid() || !tm.isValid())
        return QString();
    return QString::asprintf("%02d-%s-%02d %02d:%02d:%02d", d.day(), months[d.month() - 1], d.year() % 100,
                             tm.hour(), tm.minute(), tm.second());
}

void clsLog::Log_Event(const QString& strData, int intLogType, bool blnLogTime) {
    // Logging never stops the console: whatever goes wrong here ends this record quietly.
    try {
        if (!m_file || !m_file->isOpen())
            return;
        if (m_file->size() > kSizeLimit) {
            // No rotation: the old contents go, and this record starts the new file.
            m_file->close();
            if (QFile::exists(strFileName) && !QFile::remove(strFileName)) {
                m_file.reset();
                return;
            }
            if (!m_file->open(QIODevice::ReadWrite | QIODevice::Unbuffered)) {
                m_file.reset();
                return;
            }
        }

        QString line;
        switch (intLogType) {
        case 1:
            line = QStringLiteral("I: ");
            break;
        case 2:
            line = QStringLiteral("W: ");
            break;
        case 3:
            line = QStringLiteral("E: ");
            break;
        default:
            break;
        }
        line += strData;
        if (line.size() < kLineWidth)
            line = line.leftJustified(kLineWidth, u' ');
        if (blnLogTime)
            line += QStringLiteral(": ") + Format_Time(platform().Now());

        const QByteArray record = QByteArrayLiteral("\r\n") + line.toUtf8();
        if (!m_file->seek(m_file->size()))
            return;
        m_file->write(record);
    } catch (...) {
    }
}

void clsLog::Log_Error(const QString& strData) {
    Log_Event(strData + Error_Part(), 3, true);
}

void clsLog::Show_Error(const QString& strData, bool blnShow) {
    const QString text = Show_Text(strData);
    // The box first: a console stopped at the box has not yet logged the failure.
    if (blnShow)
        MsgBox(text, MsgStyle::Critical, MsgButtons::OK, kAppTitle);
    Log_Event(text, 3, true);
}

clsLog* Logger() {
    return The_Logger().get();
}

void Set_Logger(std::unique_ptr<clsLog> log) {
    The_Logger() = std::move(log);
}

void Show_Error(const QString& strData, bool blnShow) {
    if (clsLog* log = Logger()) {
        log->Show_Error(strData, blnShow);
        return;
    }
    if (blnShow)
        MsgBox(Show_Text(strData), MsgStyle::Critical, MsgButtons::OK, kAppTitle);
}

void Log_Event(const QString& strData, int intLogType, bool blnLogTime) {
    if (clsLog* log = Logger())
        log->Log_Event(strData, intLogType, blnLogTime);
}

void Log_Error(const QString& strData) {
    if (clsLog* log = Logger())
        log->Log_Error(strData);
}

void Report_Error() {
    Show_Error(Err().Description, true);
    Err().Clear();
}

void Report_Failure() {
    try {
        throw;
    } catch (const RunTimeFailure&) {
    } catch (const std::bad_alloc&) {
        Err().Set(errnum::OutOfMemory);
    } catch (...) {
        Err().Set(errnum::InternalError);
    }
    Report_Error();
}

void Guarded(const std::function<void()>& procedure) {
    try {
        procedure();
    } catch (...) {
        Report_Failure();
    }
}

} // namespace hv
