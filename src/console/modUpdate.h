#pragma once
// The update check: the product's web server is asked for the latest version's text when the user asks.
#include "core/WebSite.h"

#include <QString>

namespace hv {

// How long the check waits for the version service before it gives up.
inline constexpr int kUpdateTimeoutMs = 15000;

// The version service's address on the web host.
inline QString Version_Service_Url() {
    return Web_Url(QLatin1String(kVersionServicePath));
}

// A GET of strUrl, "?" and strQuery (strUrl alone for an empty query). "True" with the body in strReply
// when the server said 200; "False" with an empty reply for any other status. No answer at all (no
// connection, the connection closed, the time-out) raises a run-time error.
QString Http_Get(const QString& strUrl, const QString& strQuery, QString& strReply,
                 int timeoutMs = kUpdateTimeoutMs);

// Asks the version service at serviceUrl with "fn=getver&pn=", the product code, "&pv=" and the current
// version; true when the server was reached and said 200, the bare version text then in strReply.
bool Get_Latest_Version(const QString& strProductCode, const QString& strCurrentVersion, QString& strReply,
                        const QString& serviceUrl = Version_Service_Url(), int timeoutMs = kUpdateTimeoutMs);

// The Help menu's check: asks, tells the outcome, and offers the download page for a newer version. The
// texts are compared as they are, character by character, so "3.10.0" comes before "3.9.0".
void Check_Updates(const QString& serviceUrl = Version_Service_Url(), int timeoutMs = kUpdateTimeoutMs);

} // namespace hv
