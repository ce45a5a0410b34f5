#include "filters/model/PortRules.h"

#include "platform/Err.h"

namespace hv {

namespace {
struct ProtocolPort {
    const char* protocol;
    long port;
};
constexpr ProtocolPort kProtocols[] = {
    {"HTTP", 80},  {"HTTPS", 443}, {"FTP Control", 21},     {"FTP Data", 20},          {"SMTP", 25},
    {"POP3", 110}, {"NEWS", 119},  {"MSN Messenger", 1863}, {"Yahoo Messenger", 5050}, {"Google Talk", 5222}};

struct FilterCode {
    const char* text;
    long code;
};
constexpr FilterCode kFilters[] = {
    {"No Filter", 0},          {"HTTP Filter", 1},        {"Content Filter", 2},
    {"SMTP Filter", 3},        {"POP3 Filter", 4},        {"FTP Filter", 5},
    {"Block Incoming", 65533}, {"Block Outgoing", 65534}, {"Block Completely", 65535}};
} // namespace

void Protocol_To_Port(const QString& protocol, long& port, bool& found) {
    port = 0;
    for (const ProtocolPort& p : kProtocols)
        if (protocol == QLatin1String(p.protocol)) {
            port = p.port;
            break;
        }
    found = true;
}

void Filter_To_Protocol_Index(const QString& filter, long& index, bool& found) {
    if (filter == QLatin1String("SMTP Filter"))
        index = 4;
    else if (filter == QLatin1String("POP3 Filter"))
        index = 5;
    else
        index = 0; // "HTTP Filter" and every blocking kind
    found = true;
}

void Filter_Text_To_Code(const QString& filter, long& code, bool& found) {
    code = 0;
    for (const FilterCode& f : kFilters)
        if (filter == QLatin1String(f.text)) {
            code = f.code;
            break;
        }
    found = true;
}

void Filter_Code_To_Text(long code, QString& text, bool& found) {
    text.clear();
    for (const FilterCode& f : kFilters)
        if (code == f.code) {
            text = QLatin1String(f.text);
            break;
        }
    found = true;
}

QStringList Port_Protocols() {
    QStringList names;
    for (const ProtocolPort& p : kProtocols)
        names << QLatin1String(p.protocol);
    return names;
}

} // namespace hv
