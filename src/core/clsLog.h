#pragma once
// The session log: one text file beside the executable, and the program's one route for showing an
// unexpected failure. Writing a record can never stop the console: a failed write is swallowed.
#include <QFile>
#include <QString>
#include <functional>
#include <memory>

namespace hv {

class clsLog final {
public:
    clsLog();  // fills the default path: App_Path + "/" + App_Exe_Name + ".log"
    ~clsLog(); // closes the file

    // Stores the path and opens the file, keeping what it holds. A failure to open raises the run-time
    // error (RunTimeFailure) to the caller.
    void Start_Logging(const QString& strFileName);
    // Writes one record: CR LF then the prefixed line padded to 80 characters, then ": " and the time when
    // asked. Levels: 0 raw, 1 "I: ", 2 "W: ", 3 "E: ".
    void Log_Event(const QString& strData, int intLogType, bool blnLogTime);
    void Log_Error(const QString& strData);
    void Show_Error(const QString& strData, bool blnShow);

    QString strFileName;

    static constexpr qint64 kSizeLimit = 0x100000;
    // "DD-mmm-YY HH:Nn:ss" with English month abbreviations.
    static QString Format_Time(const class QDateTime& t);

private:
    void Open_Log_File();
    std::unique_ptr<QFile> m_file;
};

// The one logger of the process: created by Main in the interactive path, released by App_Closing.
// Null before and after, and in the installer switches.
clsLog* Logger();
void Set_Logger(std::unique_ptr<clsLog> log);

// Show_Error of the logger; with no logger the box is still shown (nothing is logged).
void Show_Error(const QString& strData, bool blnShow);
void Log_Event(const QString& strData, int intLogType, bool blnLogTime);
void Log_Error(const QString& strData);

// The error target of most procedures: Show_Error with the current run-time error's description and
// the show flag set, then the error is cleared as the procedure is left.
void Report_Error();
// The error target for whatever a procedure let through, called inside a catch: a run-time failure is
// reported as it stands, memory running out as "Out of memory" (7) and anything else as "Internal error"
// (51), so that nothing a user feeds in ends the process.
void Report_Failure();
// Runs a procedure whose only error target is Report_Failure: a failure is reported and the procedure
// ends there.
void Guarded(const std::function<void()>& procedure);

} // namespace hv
