#include "testing/ScriptedPlatform.h"

#include "platform/IniRegistry.h"

#include <QCoreApplication>
#include <QDir>

namespace hv {

QString Style_Word(MsgStyle s) {
    switch (s) {
    case MsgStyle::Plain:
        return QStringLiteral("plain");
    case MsgStyle::Critical:
        return QStringLiteral("critical");
    case MsgStyle::Question:
        return QStringLiteral("question");
    case MsgStyle::Exclamation:
        return QStringLiteral("exclamation");
    case MsgStyle::Information:
        return QStringLiteral("information");
    }
    return QString();
}

QString Quoted_Text(const QString& s) {
    QString out = s;
    out.replace(u'\\', QStringLiteral("\\\\"));
    out.replace(u'"', QStringLiteral("\\\""));
    out.replace(u'\r', QStringLiteral("\\r"));
    out.replace(u'\n', QStringLiteral("\\n"));
    out.replace(u'\t', QStringLiteral("\\t"));
    return u'"' + out + u'"';
}

namespace {

QString Answer_Word(MsgAnswer a) {
    switch (a) {
    case MsgAnswer::OK:
        return QStringLiteral("OK");
    case MsgAnswer::Cancel:
        return QStringLiteral("Cancel");
    case MsgAnswer::Yes:
        return QStringLiteral("Yes");
    case MsgAnswer::No:
        return QStringLiteral("No");
    }
    return QString();
}

} // namespace

ScriptedPlatform::ScriptedPlatform(const QString& windowsDir, const QString& appDir)
    : now(QDate(2026, 1, 15), QTime(10, 0, 0)) {
    if (windowsDir.isEmpty()) {
        m_ownWindowsDir =
            std::make_unique<QTemporaryDir>(QDir::tempPath() + QStringLiteral("/hv-windows-XXXXXX"));
        m_windowsDir = m_ownWindowsDir->path();
    } else {
        m_windowsDir = windowsDir;
    }
    if (appDir.isEmpty()) {
        m_ownAppDir = std::make_unique<QTemporaryDir>(QDir::tempPath() + QStringLiteral("/hv-app-XXXXXX"));
        m_appDir = m_ownAppDir->path();
    } else {
        m_appDir = appDir;
    }
    while (m_windowsDir.size() > 1 && m_windowsDir.endsWith(u'/'))
        m_windowsDir.chop(1);
    while (m_appDir.size() > 1 && m_appDir.endsWith(u'/'))
        m_appDir.chop(1);
    m_registry = std::make_unique<IniRegistry>(m_windowsDir + QStringLiteral("/registry.ini"));
}

ScriptedPlatform::~ScriptedPlatform() = default;

MsgAnswer ScriptedPlatform::MsgBox(const QString& text, MsgStyle style, MsgButtons buttons,
                                   const QString& title) {
    MsgAnswer answer = MsgAnswer::OK;
    if (buttons == MsgButtons::OK) {
        // A box with only OK answers itself; an OK queued for it is taken so that it does not wait for
        // the next question.
        if (!answers.empty() && answers.front() == MsgAnswer::OK)
            answers.pop_front();
    } else {
        if (answers.empty()) {
            answer = MsgAnswer::No;
            if (failure.isEmpty())
                failure = QStringLiteral("unanswered question: ") + Quoted_Text(text);
        } else {
            answer = answers.front();
            answers.pop_front();
            if (answer != MsgAnswer::Yes && answer != MsgAnswer::No) {
                if (failure.isEmpty())
                    failure = QStringLiteral("the queued answer %1 does not fit a Yes/No question: %2")
                                    .arg(Answer_Word(answer), Quoted_Text(text));
                answer = MsgAnswer::No;
            }
        }
    }
    boxes.push_back(RecordedBox{text, style, buttons, title, answer});
    if (onEvent)
        onEvent(QStringLiteral("msgbox %1 %2 %3 %4 -> %5")
                      .arg(Style_Word(style),
                           buttons == MsgButtons::YesNo ? QStringLiteral("yesno") : QStringLiteral("ok"),
                           Quoted_Text(text), Quoted_Text(title), Answer_Word(answer)));
    return answer;
}

FileDialogAnswer ScriptedPlatform::FileDialog(const FileDialogRequest& request) {
    dialogs.push_back(request);
    FileDialogAnswer answer;
    if (dialogAnswers.empty()) {
        if (failure.isEmpty())
            failure = QStringLiteral("unanswered file dialog: ") + Quoted_Text(request.title);
    } else {
        answer = dialogAnswers.front();
        dialogAnswers.pop_front();
    }
    if (onEvent) {
        QString result;
        if (answer.cancelled)
            result = QStringLiteral("cancel");
        else if (!answer.directory.isEmpty())
            result = Quoted_Text(answer.directory) + u' ' + answer.files.join(u' ');
        else
            result = answer.files.join(u' ');
        onEvent(QStringLiteral("dialog %1 %2 -> %3")
                      .arg(request.save ? QStringLiteral("save") : QStringLiteral("open"),
                           Quoted_Text(request.title), result));
    }
    return answer;
}

bool ScriptedPlatform::Shell_Open(const QString& target) {
    launched << target;
    if (onEvent)
        onEvent(QStringLiteral("open ") + Quoted_Text(target));
    return true;
}

bool ScriptedPlatform::Start_Program(const QString& commandLine, bool hidden) {
    launched << commandLine;
    if (onEvent)
        onEvent(QStringLiteral("start program%1 %2")
                      .arg(hidden ? QStringLiteral(" (hidden)") : QString(), Quoted_Text(commandLine)));
    return true;
}

Registry& ScriptedPlatform::Registry_Root() {
    return *m_registry;
}

QString ScriptedPlatform::Provider_Library_Path() {
    if (providerMissing)
        return m_appDir + QStringLiteral("/hvsock-missing/hvsock.so");
    return QStringLiteral(HV_PROVIDER_BUILD_PATH);
}

HttpAnswer ScriptedPlatform::Http_Get(const QString& url, int timeoutMs) {
    httpRequests << url;
    HttpAnswer answer;
    if (httpNetwork) {
        answer = httpNetwork(url, timeoutMs);
    } else if (!httpAnswers.empty()) {
        answer = httpAnswers.front();
        httpAnswers.pop_front();
    }
    if (onEvent)
        onEvent(QStringLiteral("http GET %1 -> %2")
                      .arg(Quoted_Text(url), answer.reached ? QString::number(answer.status) + u' ' +
                                                                  Quoted_Text(QString::fromUtf8(answer.body))
                                                            : QStringLiteral("unreachable")));
    return answer;
}

void ScriptedPlatform::Do_Events() {
    ++doEvents;
    if (QCoreApplication::instance())
        QCoreApplication::processEvents();
}

} // namespace hv
