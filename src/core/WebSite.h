#pragma once
// The product's web addresses. The host is the one setting; every path after it is fixed.
#include <QString>

namespace hv {

inline const char* const kWebHost = "www.halvenor.example";

// The home page, as the login and About forms show and open it.
inline QString Home_Site_Url() {
    return QStringLiteral("https://") + QLatin1String(kWebHost);
}
// Any page of the site by its fixed path and query ("/products.html?sr=hvts").
inline QString Web_Url(const QString& pathAndQuery) {
    return Home_Site_Url() + pathAndQuery;
}

// Where the help menu and the About form send mail.
inline const char* const kSupportMail = "support@halvenor.example";
inline const char* const kSalesMail = "sales@halvenor.example";

} // namespace hv
