// The port list of `rules`: one table for filter and blocking rules, told apart by their code, with the
// port page's checks and words (the blocking frame's end in a full stop, the filter frame's do not).
#include "admintool/AdminStore.h"
#include "admintool/Cli.h"
#include "admintool/Lists.h"
#include "filters/model/PortRules.h"
#include "platform/Err.h"
#include "store/Bits.h"
#include "store/modCommonFuns.h"
#include "store/modDB.h"
#include "store/modDBFunctions.h"

namespace hv::admin {

namespace {

struct PortRow {
    long port;
    long code;
    QString protocol;
};

std::vector<PortRow> Stored_Ports(long user) {
    std::vector<PortRow> ports;
    for (long kind : {0L, 1L}) {
        ResultTable t;
        long rows = 0;
        Ensure(Get_Ports(kind, 0, user, t, rows));
        for (int i = 1; i <= int(rows); ++i)
            ports.push_back({long(t.Long(i, 0)), long(t.Long(i, 1)), t.Text(i, 2)});
    }
    return ports;
}

long Port_Of(const QString& text) {
    try {
        return Text_To_Long(text);
    } catch (const RunTimeFailure&) {
        throw Refusal{QStringLiteral("'%1' is not a port number.").arg(text)};
    }
}

} // namespace

bool Is_Port_List(const Invocation& inv) {
    return inv.Option(QStringLiteral("--list")) == QLatin1String("port");
}

int Ports_List(const Invocation& inv) {
    for (const PortRow& p : Stored_Ports(Find_User(inv.Need(QStringLiteral("--user"))).id)) {
        QString filter;
        bool found = false;
        Filter_Code_To_Text(p.code, filter, found);
        Out(QString::number(p.port) + u'\t' + filter + u'\t' + p.protocol);
    }
    return kExitOk;
}

int Ports_Add(const Invocation& inv) {
    const long user = Find_User(inv.Need(QStringLiteral("--user"))).id;
    const QString filter = inv.Need(QStringLiteral("--filter"));
    long code = 0;
    bool found = false;
    Filter_Text_To_Code(filter, code, found);
    QString known;
    Filter_Code_To_Text(code, known, found);
    if (known != filter)
        throw UsageError{QStringLiteral("unknown filter '%1' (HTTP Filter, SMTP Filter, POP3 Filter, Block "
                                        "Completely, Block Incoming, Block Outgoing, ...)")
                             .arg(filter)};
    const PortWords& words = code > kPortBlockBoundary ? kBlockingPortWords : kFilterPortWords;
    // Without a protocol the one the page offers for the filter is taken.
    QString protocol = inv.Option(QStringLiteral("--protocol"));
    if (protocol.isEmpty()) {
        long index = 0;
        Filter_To_Protocol_Index(filter, index, found);
        protocol = Port_Protocols().value(int(index));
    }
    const std::vector<PortRow> stored = Stored_Ports(user);
    std::vector<long> ports;
    for (const QString& word : inv.words) {
        const long port = Port_Of(word);
        if (!Is_Valid_Port(port))
            throw Refusal{QLatin1String(words.invalid)};
        const bool listed =
            std::any_of(stored.begin(), stored.end(), [&](const PortRow& p) { return p.port == port; }) ||
            std::find(ports.begin(), ports.end(), port) != ports.end();
        if (listed)
            throw Refusal{QLatin1String(words.exists)};
        ports.push_back(port);
    }
    for (long port : ports)
        Ensure(Add_Port(port, code, protocol, 0, user));
    return kExitOk;
}

int Ports_Remove(const Invocation& inv) {
    const long user = Find_User(inv.Need(QStringLiteral("--user"))).id;
    const std::vector<PortRow> stored = Stored_Ports(user);
    std::vector<long> ports;
    for (const QString& word : inv.words) {
        const long port = Port_Of(word);
        if (std::none_of(stored.begin(), stored.end(), [&](const PortRow& p) { return p.port == port; }))
            throw Refusal{QStringLiteral("'%1' is not in the list.").arg(word)};
        ports.push_back(port);
    }
    StoreBatch batch;
    if (batch.Open() == 0)
        throw StoreFailed{};
    for (long port : ports)
        Ensure(Remove_List_Item(batch.Handle(), batch.result, QStringLiteral("PORT_NO"),
                                QStringLiteral("PORT_TBL"), QString::number(port), 0, user));
    return kExitOk;
}

int Ports_Switch(const Invocation& inv, bool on) {
    Set_Feature_Bit(on, FEATURE_PORT_FILTER, 0, Find_User(inv.Need(QStringLiteral("--user"))).id);
    return kExitOk;
}

} // namespace hv::admin
