#include "platform/qt/QtPlatform.h"

#include "platform/IniRegistry.h"
#include "platform/qt/NetworkGet.h"

#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QProcess>
#include <QUrl>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace hv {

QtPlatform::QtPlatform() = default;

QtPlatform::~QtPlatform() {
    if (m_lockFd >= 0)
        ::close(m_lockFd);
}

MsgAnswer QtPlatform::MsgBox(const QString& text, MsgStyle style, MsgButtons buttons, const QString& title) {
    QMessageBox box(QApplication::activeWindow());
    box.setWindowTitle(title);
    box.setText(text);
    switch (style) {
    case MsgStyle::Plain:
        box.setIcon(QMessageBox::NoIcon);
        break;
    case MsgStyle::Critical:
        box.setIcon(QMessageBox::Critical);
        break;
    case MsgStyle::Question:
        box.setIcon(QMessageBox::Question);
        break;
    case MsgStyle::Exclamation:
        box.setIcon(QMessageBox::Warning);
        break;
    case MsgStyle::Information:
        box.setIcon(QMessageBox::Information);
        break;
    }
    if (buttons == MsgButtons::YesNo) {
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
        box.setDefaultButton(QMessageBox::Yes);
        box.setEscapeButton(QMessageBox::No);
        return box.exec() == QMessageBox::Yes ? MsgAnswer::Yes : MsgAnswer::No;
    }
    box.setStandardButtons(QMessageBox::Ok);
    box.exec();
    return MsgAnswer::OK;
}

QString QtPlatform::Qt_Filter(const QString& filter) {
    const QStringList parts = filter.split(u'|');
    QStringList out;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        QStringList patterns = parts[i + 1].split(u';', Qt::SkipEmptyParts);
        for (QString& p : patterns) {
            p = p.trimmed();
            if (p == QLatin1String("*.*"))
                p = QStringLiteral("*");
        }
        out << QStringLiteral("%1 (%2)").arg(parts[i].trimmed(), patterns.join(u' '));
    }
    return out.join(QStringLiteral(";;"));
}

FileDialogAnswer QtPlatform::FileDialog(const FileDialogRequest& request) {
    FileDialogAnswer answer;
    const QString filter = Qt_Filter(request.filter);
    QWidget* owner = QApplication::activeWindow();
    if (request.save) {
        const QString f = QFileDialog::getSaveFileName(owner, request.title, request.fileName, filter);
        if (!f.isEmpty()) {
            answer.cancelled = false;
            answer.files << QDir::toNativeSeparators(f);
        }
        return answer;
    }
    if (!request.multiSelect) {
        const QString f = QFileDialog::getOpenFileName(owner, request.title, request.fileName, filter);
        if (!f.isEmpty()) {
            answer.cancelled = false;
            answer.files << QDir::toNativeSeparators(f);
        }
        return answer;
    }
    const QStringList files = QFileDialog::getOpenFileNames(owner, request.title, request.fileName, filter);
    if (files.isEmpty())
        return answer;
    answer.cancelled = false;
    if (files.size() == 1) {
        answer.files << QDir::toNativeSeparators(files.front());
        return answer;
    }
    // Several files come back as their folder and their bare names, as the desktop's dialog gives them.
    answer.directory = QDir::toNativeSeparators(QFileInfo(files.front()).absolutePath());
    for (const QString& f : files)
        answer.files << QFileInfo(f).fileName();
    return answer;
}

bool QtPlatform::Shell_Open(const QString& target) {
    const QUrl url = target.contains(QLatin1String("://")) || target.startsWith(QLatin1String("mailto:"))
                         ? QUrl(target)
                         : QUrl::fromLocalFile(target);
    return QDesktopServices::openUrl(url);
}

bool QtPlatform::Start_Program(const QString& commandLine, bool hidden) {
    (void)hidden; // a detached process has no window of ours to hide
    QStringList args = QProcess::splitCommand(commandLine);
    if (args.isEmpty())
        return false;
    const QString program = args.takeFirst();
    return QProcess::startDetached(program, args);
}

Registry& QtPlatform::Registry_Root() {
    if (!m_registry)
        m_registry = std::make_unique<IniRegistry>(Windows_Directory() + QStringLiteral("/registry.ini"));
    return *m_registry;
}

QString QtPlatform::Provider_Library_Path() {
    return App_Path() + QStringLiteral("/hvsock.so");
}

HttpAnswer QtPlatform::Http_Get(const QString& url, int timeoutMs) {
    return Network_Get(url, timeoutMs);
}

QString QtPlatform::Windows_Directory() {
    return Host_Windows_Directory();
}

QString QtPlatform::App_Path() {
    return QCoreApplication::applicationDirPath();
}

QString QtPlatform::App_Exe_Name() {
    return QFileInfo(QCoreApplication::applicationFilePath()).completeBaseName();
}

QString QtPlatform::User_Name() {
    return Host_User_Name();
}

QDateTime QtPlatform::Now() {
    return QDateTime::currentDateTime();
}

bool QtPlatform::Previous_Instance_Running() {
    if (m_lockFd >= 0)
        return false; // this process holds it already
    // One lock per user id, in a fixed place: two logins of one user with different environments still
    // find the same file. It is locked with flock and kept open for the life of the process; the OS
    // releases the lock when the process ends, however it ends. /tmp is shared by every user, so a link
    // or a file somebody else laid there is not taken for this user's lock.
    const QByteArray path = QByteArray("/tmp/halvenorts-") + QByteArray::number(::getuid()) + ".lock";
    const int fd = ::open(path.constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (fd < 0)
        return false; // no lock to be had: the start goes on rather than refusing every start
    struct stat st {};
    if (::fstat(fd, &st) != 0 || !S_ISREG(st.st_mode) || st.st_uid != ::getuid()) {
        ::close(fd);
        return false;
    }
    if (::flock(fd, LOCK_EX | LOCK_NB) != 0) {
        ::close(fd);
        return true;
    }
    m_lockFd = fd;
    return false;
}

void QtPlatform::Do_Events() {
    QCoreApplication::processEvents();
}

} // namespace hv
