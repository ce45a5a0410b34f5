#pragma once
// The desktop: Qt's message boxes and file dialogs, the desktop's "open", detached processes, the
// registry stand-in in the Windows directory, a synchronous HTTP GET and a per-user single-instance lock.
#include "platform/Platform.h"

#include <memory>

namespace hv {

class IniRegistry;

class QtPlatform final : public Platform {
public:
    QtPlatform();
    ~QtPlatform() override;

    MsgAnswer MsgBox(const QString& text, MsgStyle style, MsgButtons buttons, const QString& title) override;
    FileDialogAnswer FileDialog(const FileDialogRequest& request) override;
    bool Shell_Open(const QString& target) override;
    bool Start_Program(const QString& commandLine, bool hidden) override;
    Registry& Registry_Root() override;
    QString Provider_Library_Path() override;
    HttpAnswer Http_Get(const QString& url, int timeoutMs) override;
    QString Windows_Directory() override;
    QString App_Path() override;
    QString App_Exe_Name() override;
    QString User_Name() override;
    QDateTime Now() override;
    bool Is_Wow64() override { return false; }
    bool Previous_Instance_Running() override;
    void Do_Events() override;
    bool Interactive() const override { return true; }

    // "Text Files|*.txt|All Files|*.*" as Qt writes it: "Text Files (*.txt);;All Files (*)".
    static QString Qt_Filter(const QString& filter);

private:
    std::unique_ptr<IniRegistry> m_registry;
    int m_lockFd = -1; // held open for the life of the process; the OS drops the lock if it dies
};

} // namespace hv
