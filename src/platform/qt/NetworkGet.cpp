#include "platform/qt/NetworkGet.h"

#include <QCursor>
#include <QEventLoop>
#include <QGuiApplication>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QTimer>
#include <QUrl>

namespace hv {

HttpAnswer Network_Get(const QString& url, int timeoutMs) {
    HttpAnswer answer;
    QNetworkAccessManager manager;
    QNetworkRequest request{QUrl(url)};
    QNetworkReply* reply = manager.get(request);
    QEventLoop loop;
    QTimer guard;
    guard.setSingleShot(true);
    QObject::connect(reply, &QNetworkReply::finished, &loop, &QEventLoop::quit);
    QObject::connect(&guard, &QTimer::timeout, &loop, &QEventLoop::quit);
    guard.start(timeoutMs);
    if (!reply->isFinished()) {
        // The user waits for an answer: the busy pointer says so while the windows keep painting.
        const bool withPointer = qobject_cast<QGuiApplication*>(QCoreApplication::instance()) != nullptr;
        if (withPointer)
            QGuiApplication::setOverrideCursor(QCursor(Qt::WaitCursor));
        loop.exec(QEventLoop::ExcludeUserInputEvents);
        if (withPointer)
            QGuiApplication::restoreOverrideCursor();
    }
    if (!reply->isFinished()) {
        answer.timedOut = true;
        reply->abort();
    } else if (const QVariant status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute);
               status.isValid()) {
        answer.reached = true;
        answer.status = status.toInt();
        answer.body = reply->readAll();
    }
    delete reply;
    return answer;
}

} // namespace hv
