#pragma once
// Everything outside the program goes through one Platform: the desktop, the file system's special
// places, the clock, other programs, the network, the registry stand-in and the provider library.
// The real one (platform/qt) serves the desktop; the scripted one (platform/ScriptedPlatform) serves the
// scenario driver and the tests. Pages never reach Qt's dialogs or the OS directly.
#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QStringList>

namespace hv {

class Registry;

enum class MsgStyle { Plain, Critical, Question, Exclamation, Information };
enum class MsgButtons { OK, YesNo };
enum class MsgAnswer { OK, Cancel, Yes, No };

struct FileDialogRequest {
    bool save = false;
    QString title;
    QString filter;   // "Text Files|*.txt|All Files|*.*"
    QString fileName; // what the dialog holds before it is shown
    bool multiSelect = false;
};

struct FileDialogAnswer {
    bool cancelled = true;
    QString directory; // with several files: their folder
    QStringList files; // one full path, or several bare names in `directory`
};

struct HttpAnswer {
    bool reached = false;  // false: no answer at all (no network, connection closed, time-out)
    bool timedOut = false; // not reached because the time-out ran out first
    int status = 0;
    QByteArray body;
};

class Platform {
public:
    virtual ~Platform() = default;

    // Message boxes. The title is "HalvenorTS" unless a caller says otherwise.
    virtual MsgAnswer MsgBox(const QString& text, MsgStyle style, MsgButtons buttons,
                             const QString& title) = 0;

    // Open and save dialogs.
    virtual FileDialogAnswer FileDialog(const FileDialogRequest& request) = 0;

    // The shell's "open" on a document, URL or mailto: address. True when it was handed on.
    virtual bool Shell_Open(const QString& target) = 0;
    // Starts a program (full command line) and does not wait for it.
    virtual bool Start_Program(const QString& commandLine, bool hidden) = 0;

    // The registry stand-in (an INI file in the Windows directory), HKEY_LOCAL_MACHINE only.
    virtual Registry& Registry_Root() = 0;

    // Path of the filter provider library ("hvsock.dll"); empty when it cannot be had.
    virtual QString Provider_Library_Path() = 0;

    // A synchronous GET with a time-out.
    virtual HttpAnswer Http_Get(const QString& url, int timeoutMs) = 0;

    // The Windows directory, without a trailing separator.
    virtual QString Windows_Directory() = 0;
    // The executable's directory (no trailing separator) and its name without extension.
    virtual QString App_Path() = 0;
    virtual QString App_Exe_Name() = 0;
    // The operating-system user name; empty when it cannot be had.
    virtual QString User_Name() = 0;
    virtual QDateTime Now() = 0;
    virtual bool Is_Wow64() = 0;

    // Takes the per-user single-instance lock; true when another instance already holds it.
    virtual bool Previous_Instance_Running() = 0;

    // Lets pending interface events run (the long import loops yield through this).
    virtual void Do_Events() = 0;

    // True for the desktop: modal pages block in their own loop and timers fire by themselves.
    // False under the scenario driver: a modal page is shown and the call returns, timers fire on demand.
    virtual bool Interactive() const = 0;
};

Platform& platform();
// Installs the platform for the process (or a test); the caller keeps ownership.
void Set_Platform(Platform* p);

// What the real platforms of the console and the tools answer alike: the Windows directory stand-in
// ($HALVENORTS_WINDIR, else /var/lib/halvenorts, without a trailing separator) and the operating-system
// user running the program ($USER, else the password database; empty when unknown).
QString Host_Windows_Directory();
QString Host_User_Name();

// A message box with the application's title, as most callers want it.
MsgAnswer MsgBox(const QString& text, MsgStyle style = MsgStyle::Plain, MsgButtons buttons = MsgButtons::OK,
                 const QString& title = QString());

} // namespace hv
