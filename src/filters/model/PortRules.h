#pragma once
// The port page's conversions between filter kinds, codes, protocols and ports.
#include <QString>
#include <QStringList>

namespace hv {

// Codes from 60000 up are blocking rules; those below are filter rules. The page writes 1, 3, 4 and the
// three blocking codes; the others are known for rows written elsewhere.
inline constexpr long kPortBlockBoundary = 60000;

// The two frames' refusals: the blocking frame's end in a full stop, the filter frame's do not.
struct PortWords {
    const char* invalid;
    const char* exists;
};
inline constexpr PortWords kFilterPortWords{"Please enter a valid Port Number!",
                                            "Port Number already exist!"};
inline constexpr PortWords kBlockingPortWords{"Please enter a valid Port Number!.",
                                              "Port Number already exist!."};

// The fixed ports of the protocol combo; any other text gives port 0. The found flag is always set.
void Protocol_To_Port(const QString& protocol, long& port, bool& found);
// The protocol combo's index for a filter kind: "HTTP Filter" 0, "SMTP Filter" 4, "POP3 Filter" 5, else 0.
void Filter_To_Protocol_Index(const QString& filter, long& index, bool& found);
// A filter kind's code; an unknown text gives 0.
void Filter_Text_To_Code(const QString& filter, long& code, bool& found);
// A code's filter kind; an unknown code gives an empty text.
void Filter_Code_To_Text(long code, QString& text, bool& found);

// The protocol combo's entries, in list order.
QStringList Port_Protocols();

} // namespace hv
