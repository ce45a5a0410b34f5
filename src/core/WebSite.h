#pragma once
// The product's web addresses. The host and the two mail addresses are build settings (HV_WEB_HOST,
// HV_SUPPORT_MAIL, HV_SALES_MAIL); every path after the host is fixed, as the site expects it.
#include <QString>

#ifndef HV_WEB_HOST
#define HV_WEB_HOST "www.halvenor.example"
#endif
#ifndef HV_SUPPORT_MAIL
#define HV_SUPPORT_MAIL "support@halvenor.example"
#endif
#ifndef HV_SALES_MAIL
#define HV_SALES_MAIL "sales@halvenor.example"
#endif

namespace hv {

inline const char* const kWebHost = HV_WEB_HOST;
// Where the help menu and the About form send mail.
inline const char* const kSupportMail = HV_SUPPORT_MAIL;
inline const char* const kSalesMail = HV_SALES_MAIL;

// The product code the site knows this console by.
inline const char* const kProductCode = "hvts";

// The site's fixed paths and queries after the host.
inline const char* const kProductPath = "/halvenor-terminal-server";
inline const char* const kDownloadPath = "/halvenorts-download.html";
inline const char* const kFaqPath = "/halvenorts-faqs.html?sr=hvts";
inline const char* const kProductsPath = "/products.html?sr=hvts";
inline const char* const kVersionServicePath = "/fns/genfns.php";

// The home page, as the links of the console and of its pages open it.
inline QString Home_Site_Url() {
    return QStringLiteral("https://") + QLatin1String(kWebHost);
}
// Any page of the site by its fixed path and query ("/products.html?sr=hvts").
inline QString Web_Url(const QString& pathAndQuery) {
    return Home_Site_Url() + pathAndQuery;
}
// The download page of a new version.
inline QString Download_Url() {
    return Web_Url(QLatin1String(kProductPath) + QLatin1String(kDownloadPath) + QStringLiteral("?sr=") +
                   QLatin1String(kProductCode));
}
inline QString Mail_To(const char* address) {
    return QStringLiteral("mailto:") + QLatin1String(address);
}

} // namespace hv
