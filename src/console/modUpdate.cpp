#include "console/modUpdate.h"

#include "core/Version.h"
#include "platform/Err.h"
#include "platform/Platform.h"

namespace hv {

namespace {

// The errors of the web request object when no answer came.
constexpr long kResourceNotFound = -2146697211;
constexpr long kRequestTimedOut = -2147012894;

constexpr int kHttpOk = 200;

} // namespace

QString Http_Get(const QString& strUrl, const QString& strQuery, QString& strReply, int timeoutMs) {
    const QString target = strQuery.isEmpty() ? strUrl : strUrl + u'?' + strQuery;
    const HttpAnswer answer = platform().Http_Get(target, timeoutMs);
    if (!answer.reached) {
        if (answer.timedOut)
            Err().Raise(kRequestTimedOut, QStringLiteral("The operation timed out"));
        Err().Raise(kResourceNotFound, QStringLiteral("The system cannot locate the resource specified."));
    }
    if (answer.status != kHttpOk) {
        strReply.clear();
        return QStringLiteral("False");
    }
    strReply = QString::fromUtf8(answer.body);
    return QStringLiteral("True");
}

bool Get_Latest_Version(const QString& strProductCode, const QString& strCurrentVersion, QString& strReply,
                        const QString& serviceUrl, int timeoutMs) {
    const QString query =
        QStringLiteral("fn=getver&pn=") + strProductCode + QStringLiteral("&pv=") + strCurrentVersion;
    return Http_Get(serviceUrl, query, strReply, timeoutMs) == QLatin1String("True");
}

void Check_Updates(const QString& serviceUrl, int timeoutMs) {
    const QString current = Version_Text();
    QString latest;
    if (!Get_Latest_Version(QLatin1String(kProductCode), current, latest, serviceUrl, timeoutMs)) {
        MsgBox(QStringLiteral("Unable to get update information at this time! Try again later."),
               MsgStyle::Exclamation);
        return;
    }
    if (latest.compare(current, Qt::CaseSensitive) > 0) {
        if (MsgBox(
                QStringLiteral("A new version (ver. ") + latest +
                    QStringLiteral(") is available for download. Do you want to download the new version?"),
                MsgStyle::Information, MsgButtons::YesNo) == MsgAnswer::Yes)
            platform().Shell_Open(Download_Url());
        return;
    }
    // Whatever the server said, the running version is the one named.
    MsgBox(QStringLiteral("You are running the most recent version (ver. ") + current +
               QStringLiteral(") of HalvenorTS!"),
           MsgStyle::Information);
}

} // namespace hv
