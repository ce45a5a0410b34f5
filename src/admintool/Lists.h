#pragma once
// The rule lists as the tool names them, and what the rules, policy and effective commands share of them.
#include "filters/model/RuleLists.h"
#include "store/modDB.h"

#include <QStringList>
#include <vector>

namespace hv::admin {

struct NamedList {
    QString name; // "website-black"
    const RuleListSpec* spec;
};

const std::vector<NamedList>& Named_Lists();
const RuleListSpec* Find_List(const QString& name); // null for an unknown name
// The bypassed programs of the internet settings page are a list of their own statements.
bool Is_Bypass(const RuleListSpec& spec);

// A user's rules of one list, in the store's order.
QStringList Stored_Rules(const RuleListSpec& spec, long user);
// Why a rule cannot be stored, in the list's page's words where it has them; empty when it can.
QString Refusal_Of(const RuleListSpec& spec, const QString& text);
// Writes one rule on a batch's open connection.
bool Add_Rule(int handle, ResultTable& result, const RuleListSpec& spec, long user, const QString& text);

// The port list, which is rows of ports and codes rather than texts: `rules` hands it over whole.
struct Invocation;
bool Is_Port_List(const Invocation& inv);
int Ports_List(const Invocation& inv);
int Ports_Add(const Invocation& inv);
int Ports_Remove(const Invocation& inv);
int Ports_Switch(const Invocation& inv, bool on);

} // namespace hv::admin
