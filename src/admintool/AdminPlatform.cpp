#include "admintool/AdminPlatform.h"

#include "platform/IniRegistry.h"

#include <QCoreApplication>
#include <QDir>
#include <cstdio>

namespace hv::admin {

AdminPlatform::AdminPlatform() = default;
AdminPlatform::~AdminPlatform() = default;

MsgAnswer AdminPlatform::MsgBox(const QString& text, MsgStyle style, MsgButtons buttons, const QString&) {
    if (style == MsgStyle::Critical)
        m_failed = true;
    // The store reports a failure twice (the engine's words, then the operation's); an empty report adds
    // nothing for a reader of the terminal.
    if (!text.isEmpty())
        std::fprintf(stderr, "halvenorts-admin: %s\n", text.toLocal8Bit().constData());
    return buttons == MsgButtons::YesNo ? MsgAnswer::No : MsgAnswer::OK;
}

Registry& AdminPlatform::Registry_Root() {
    if (!m_registry)
        m_registry = std::make_unique<IniRegistry>(Windows_Directory() + QStringLiteral("/registry.ini"));
    return *m_registry;
}

QString AdminPlatform::Windows_Directory() {
    return Host_Windows_Directory();
}

QString AdminPlatform::App_Path() {
    return QCoreApplication::applicationDirPath();
}

QString AdminPlatform::User_Name() {
    return Host_User_Name();
}

} // namespace hv::admin
