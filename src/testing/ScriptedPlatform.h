#pragma once
// The platform of the scenario driver and the tests: a world made of two fresh folders (the Windows
// directory and the executable's directory), a clock that stands still, an answer queue for questions and
// file dialogs, and a record of every message box and launch.
#include "platform/Platform.h"

#include <QTemporaryDir>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace hv {

// How the transcript and the driver's failure lines write a box's style ("exclamation") and a text
// (in double quotes, with line ends, tabs, quotes and backslashes as escapes).
QString Style_Word(MsgStyle s);
QString Quoted_Text(const QString& s);

struct RecordedBox {
    QString text;
    MsgStyle style;
    MsgButtons buttons;
    QString title;
    MsgAnswer answer;
};

class ScriptedPlatform final : public Platform {
public:
    // With empty folders, makes two temporary ones that live as long as the platform.
    explicit ScriptedPlatform(const QString& windowsDir = QString(), const QString& appDir = QString());
    ~ScriptedPlatform() override;

    MsgAnswer MsgBox(const QString& text, MsgStyle style, MsgButtons buttons, const QString& title) override;
    FileDialogAnswer FileDialog(const FileDialogRequest& request) override;
    bool Shell_Open(const QString& target) override;
    bool Start_Program(const QString& commandLine, bool hidden) override;
    Registry& Registry_Root() override;
    QString Provider_Library_Path() override;
    HttpAnswer Http_Get(const QString& url, int timeoutMs) override;
    QString Windows_Directory() override { return m_windowsDir; }
    QString App_Path() override { return m_appDir; }
    QString App_Exe_Name() override { return QStringLiteral("halvenorts"); }
    QString User_Name() override { return userName; }
    QDateTime Now() override { return now; }
    bool Is_Wow64() override { return wow64; }
    bool Previous_Instance_Running() override { return instanceRunning; }
    void Do_Events() override;
    bool Interactive() const override { return false; }

    // The world.
    QString userName = QStringLiteral("Administrator");
    QDateTime now; // default 2026-01-15 10:00:00
    bool wow64 = false;
    bool instanceRunning = false;
    bool providerMissing = false;
    std::deque<MsgAnswer> answers;              // for boxes that ask (Yes/No)
    std::deque<FileDialogAnswer> dialogAnswers; // for file dialogs
    std::deque<HttpAnswer> httpAnswers;         // an empty queue: unreachable
    // When set, a GET goes to it instead of the queue (a test's own server through the real network code).
    std::function<HttpAnswer(const QString& url, int timeoutMs)> httpNetwork;

    // What happened.
    std::vector<RecordedBox> boxes;
    std::vector<FileDialogRequest> dialogs;
    QStringList launched; // documents, URLs, mail addresses and command lines
    QStringList httpRequests;
    int doEvents = 0;
    // Set when a question or file dialog found no queued answer (the box is recorded, No/Cancel given).
    QString failure;
    // Called for every box, dialog and launch as it happens (the driver's transcript).
    std::function<void(const QString&)> onEvent;

private:
    std::unique_ptr<QTemporaryDir> m_ownWindowsDir, m_ownAppDir;
    QString m_windowsDir, m_appDir;
    std::unique_ptr<Registry> m_registry;
};

// Installs a platform for the life of a scope (tests).
class PlatformScope final {
public:
    explicit PlatformScope(Platform& p) { Set_Platform(&p); }
    ~PlatformScope() { Set_Platform(nullptr); }
    PlatformScope(const PlatformScope&) = delete;
    PlatformScope& operator=(const PlatformScope&) = delete;
};

} // namespace hv
