// The world commands: what the console finds around it before (and between) its starts.
#include "drive/Player.h"

#include "platform/IniRegistry.h"
#include "testing/ScriptedPlatform.h"
#include "setup/StoreSetup.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <sqlite3.h>

namespace hv::drive {

void Player::Cmd_Store(const Command& c) {
    Need_Args(c, 1, 1, "store default|none|empty");
    const Word& what = c.words[1];
    const QString path = Store_Path();
    if (what.Is("default")) {
        QString error;
        if (!Create_Store(path, true, &error))
            throw Failure{QStringLiteral("the store could not be laid down: %1").arg(error)};
    } else if (what.Is("none")) {
        if (QFile::exists(path) && !QFile::remove(path))
            throw Failure{QStringLiteral("the store file could not be removed")};
    } else if (what.Is("empty")) {
        QFile f(path);
        if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate))
            throw Failure{QStringLiteral("the empty store file could not be written")};
    } else {
        throw Failure{QStringLiteral("store takes default, none or empty, not \"%1\"").arg(what.text)};
    }
}

void Player::Cmd_Sql(const Command& c) {
    Need_Args(c, 1, 1, "sql \"STATEMENT\"");
    const QString path = Store_Path();
    if (!QFile::exists(path))
        throw Failure{QStringLiteral("there is no store to run the statement on")};
    sqlite3* db = nullptr;
    if (sqlite3_open_v2(QFile::encodeName(path).constData(), &db, SQLITE_OPEN_READWRITE, nullptr) !=
        SQLITE_OK) {
        const QString why = QString::fromUtf8(sqlite3_errmsg(db));
        sqlite3_close(db);
        throw Failure{QStringLiteral("the store could not be opened: %1").arg(why)};
    }
    char* message = nullptr;
    const int rc = sqlite3_exec(db, c.words[1].text.toUtf8().constData(), nullptr, nullptr, &message);
    const QString why = message ? QString::fromUtf8(message) : QString();
    sqlite3_free(message);
    sqlite3_close(db);
    if (rc != SQLITE_OK)
        throw Failure{QStringLiteral("the statement failed: %1").arg(why)};
}

void Player::Cmd_User(const Command& c) {
    Need_Args(c, 1, 1, "user NAME");
    m_platform->userName = c.words[1].text;
}

void Player::Cmd_Now(const Command& c) {
    Need_Args(c, 1, 2, "now YYYY-MM-DD HH:MM:SS");
    QString text = c.words[1].text;
    if (c.words.size() == 3)
        text += u' ' + c.words[2].text;
    const QDateTime t = QDateTime::fromString(text, QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    if (!t.isValid())
        throw Failure{QStringLiteral("\"%1\" is not a time as YYYY-MM-DD HH:MM:SS").arg(text)};
    m_platform->now = t;
}

void Player::Cmd_Instance(const Command& c) {
    Need_Args(c, 1, 1, "instance running");
    if (!c.words[1].Is("running"))
        throw Failure{QStringLiteral("write: instance running")};
    m_platform->instanceRunning = true;
}

void Player::Cmd_Wow64(const Command& c) {
    Need_Args(c, 1, 1, "wow64 on|off");
    if (c.words[1].Is("on"))
        m_platform->wow64 = true;
    else if (c.words[1].Is("off"))
        m_platform->wow64 = false;
    else
        throw Failure{QStringLiteral("wow64 takes on or off")};
}

void Player::Cmd_Provider(const Command& c) {
    Need_Args(c, 1, 1, "provider missing");
    if (!c.words[1].Is("missing"))
        throw Failure{QStringLiteral("write: provider missing")};
    m_platform->providerMissing = true;
}

QString Machine_Key(const QString& keyPath) {
    // The stand-in holds HKEY_LOCAL_MACHINE only; a path written with its root names the same key.
    for (const char* root : {"HKEY_LOCAL_MACHINE\\", "HKLM\\"})
        if (keyPath.startsWith(QLatin1String(root), Qt::CaseInsensitive))
            return keyPath.mid(qsizetype(qstrlen(root)));
    return keyPath;
}

void Player::Cmd_Registry(const Command& c) {
    Need_Args(c, 3, 3, "registry \"KEYPATH\" \"NAME\" \"VALUE\"");
    Registry& reg = m_platform->Registry_Root();
    if (!reg.Set_String(Machine_Key(c.words[1].text), c.words[2].text, c.words[3].text))
        throw Failure{QStringLiteral("the registry stand-in could not be written")};
}

void Player::Cmd_Http(const Command& c) {
    Need_Args(c, 1, 2, "http STATUS \"BODY\" | http unreachable");
    HttpAnswer a;
    if (c.words[1].Is("unreachable")) {
        if (c.words.size() != 2)
            throw Failure{QStringLiteral("http unreachable takes no body")};
    } else {
        bool ok = false;
        a.status = c.words[1].text.toInt(&ok);
        if (!ok)
            throw Failure{QStringLiteral("\"%1\" is not an HTTP status").arg(c.words[1].text)};
        a.reached = true;
        if (c.words.size() == 3)
            a.body = c.words[2].bytes;
    }
    m_platform->httpAnswers.push_back(a);
}

void Player::Cmd_Write(const Command& c) {
    Need_Args(c, 2, 2, "write \"PATH\" \"BYTES\"");
    const QString path = Work_Path(c.words[1].text);
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile f(path);
    if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate) ||
        f.write(c.words[2].bytes) != c.words[2].bytes.size())
        throw Failure{QStringLiteral("%1 could not be written").arg(path)};
}

} // namespace hv::drive
