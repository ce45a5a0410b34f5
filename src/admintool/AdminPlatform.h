#pragma once
// The platform of the command-line tool: no desktop. A message box becomes a line on standard error, a
// question is never asked (the tool decides before it writes), and there are no dialogs, no network and
// no provider library.
#include "platform/Platform.h"

#include <memory>

namespace hv::admin {

class AdminPlatform final : public Platform {
public:
    AdminPlatform();
    ~AdminPlatform() override;

    MsgAnswer MsgBox(const QString& text, MsgStyle style, MsgButtons buttons, const QString& title) override;
    FileDialogAnswer FileDialog(const FileDialogRequest&) override { return {}; }
    bool Shell_Open(const QString&) override { return false; }
    bool Start_Program(const QString&, bool) override { return false; }
    Registry& Registry_Root() override;
    QString Provider_Library_Path() override { return QString(); }
    HttpAnswer Http_Get(const QString&, int) override { return {}; }
    QString Windows_Directory() override;
    QString App_Path() override;
    QString App_Exe_Name() override { return QStringLiteral("halvenorts-admin"); }
    QString User_Name() override;
    QDateTime Now() override { return QDateTime::currentDateTime(); }
    bool Is_Wow64() override { return false; }
    bool Previous_Instance_Running() override { return false; }
    void Do_Events() override {}
    bool Interactive() const override { return false; }

    // True once the store reported a failure (a critical box): the command then ends with exit 1.
    bool Failed() const { return m_failed; }

private:
    std::unique_ptr<Registry> m_registry;
    bool m_failed = false;
};

} // namespace hv::admin
