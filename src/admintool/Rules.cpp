// rules: the text rule lists of a user, with the console's checks and words.
#include "admin/model/AdminWords.h"
#include "admintool/AdminStore.h"
#include "admintool/Cli.h"
#include "admintool/Lists.h"
#include "core/ListFile.h"
#include "platform/Err.h"
#include "store/modCommonFuns.h"
#include "store/modDB.h"
#include "store/modDBFunctions.h"

#include <QSet>
#include <optional>

namespace hv::admin {

namespace {

// The bypassed programs of the internet settings page: a plain list without a switch, trimmed on Add,
// refused by nothing but its duplicate test.
const RuleListSpec& Bypass() {
    static const RuleListSpec s{
        .table = "BYPASS_EXE_TBL",
        .column = "BYPASS_EXE",
        .featureBit = 0,
        .addText = AddText::Trim,
        .check = Is_Valid_Window_Title,
        .limit = 8,
        .cumulativeAllowance = false,
        .maxLength = 255,
        .importCut = 255,
        .importLower = false,
        .importCheck = Is_Valid_Window_Title,
        .iconKey = QStringLiteral("BypassedExe"),
        .columnCaption = QStringLiteral("EXE Name"),
        .widthTwips = 0,
        .heightTwips = 0,
        .words = RuleListWords{.addInvalid = QLatin1String(kInvalidExe),
                               .editInvalid = QLatin1String(kInvalidExe),
                               .addExists = QLatin1String(kExeExists),
                               .editExists = QLatin1String(kExeExists),
                               .deleteQuestion =
                                   QStringLiteral("Are you sure you want to delete the selected Exe(s)?"),
                               .exportTitle = QString(),
                               .defaultSuffix = QString(),
                               .importTitle = QString(),
                               .copySettingsName = QStringLiteral("Internet Settings")}};
    return s;
}

QString List_Names() {
    QStringList names;
    for (const NamedList& l : Named_Lists())
        names.append(l.name);
    names.append(QStringLiteral("port"));
    return names.join(QStringLiteral(", "));
}

const RuleListSpec& Named_List(const Invocation& inv) {
    const QString name = inv.Need(QStringLiteral("--list"));
    if (const RuleListSpec* spec = Find_List(name))
        return *spec;
    throw UsageError{QStringLiteral("unknown list '%1' (lists: %2)").arg(name, List_Names())};
}

} // namespace

const std::vector<NamedList>& Named_Lists() {
    static const std::vector<NamedList> lists = {
        {QStringLiteral("website-black"), &rulelists::Black()},
        {QStringLiteral("website-white"), &rulelists::White()},
        {QStringLiteral("file"), &rulelists::File()},
        {QStringLiteral("smtp"), &rulelists::Smtp()},
        {QStringLiteral("pop3"), &rulelists::Pop3()},
        {QStringLiteral("exe"), &rulelists::Exe()},
        {QStringLiteral("window"), &rulelists::Window()},
        {QStringLiteral("bypass"), &Bypass()},
    };
    return lists;
}

const RuleListSpec* Find_List(const QString& name) {
    for (const NamedList& l : Named_Lists())
        if (l.name == name)
            return l.spec;
    return nullptr;
}

bool Is_Bypass(const RuleListSpec& spec) {
    return &spec == &Bypass();
}

QStringList Stored_Rules(const RuleListSpec& spec, long user) {
    ResultTable table;
    long rows = 0;
    if (Is_Bypass(spec)) {
        Ensure(Get_Bypass_Exes(0, user, table));
        rows = table.Rows();
    } else {
        Ensure(Get_List_Items(QLatin1String(spec.column), QLatin1String(spec.table), 0, user, table, rows));
    }
    QStringList rules;
    rules.reserve(rows);
    for (int i = 1; i <= int(rows); ++i)
        rules.append(table.Text(i, 0));
    return rules;
}

namespace {

bool Contains_Ignoring_Case(const QStringList& rules, const QString& text) {
    const QString lower = text.toLower();
    return std::any_of(rules.begin(), rules.end(), [&](const QString& r) { return r.toLower() == lower; });
}

// The website page keeps a site off both lists at once, looking in the black list first, and says which
// list already has it.
QString Duplicate_Words(const RuleListSpec& spec, long user, const QString& text) {
    const bool black = &spec == &rulelists::Black();
    if (black || &spec == &rulelists::White()) {
        if (Contains_Ignoring_Case(Stored_Rules(rulelists::Black(), user), text))
            return black ? spec.words.addExists : QStringLiteral("URL already exist in Black List!.");
        if (Contains_Ignoring_Case(Stored_Rules(rulelists::White(), user), text))
            return black ? QStringLiteral("URL already exist in White List!.") : spec.words.addExists;
        return QString();
    }
    return Contains_Ignoring_Case(Stored_Rules(spec, user), text) ? spec.words.addExists : QString();
}

} // namespace

QString Refusal_Of(const RuleListSpec& spec, const QString& text) {
    if (!spec.check(text))
        return spec.words.addInvalid;
    if (text.size() > spec.maxLength)
        return QStringLiteral("'%1' is longer than the %2 characters the list takes.")
            .arg(text)
            .arg(spec.maxLength);
    // The store's statements take no apostrophe in a value and no NUL can be stored as text.
    if (text.contains(u'\''))
        return QStringLiteral("'%1' holds an apostrophe, which the store does not take.").arg(text);
    if (text.contains(QChar(0)))
        return QStringLiteral("The rule holds a NUL character.");
    return QString();
}

bool Add_Rule(int handle, ResultTable& result, const RuleListSpec& spec, long user, const QString& text) {
    if (Is_Bypass(spec))
        return Add_Bypass_Exe(handle, result, 0, user, text);
    return Add_List_Item(handle, result, QLatin1String(spec.column), QLatin1String(spec.table), text, 0,
                         user);
}

namespace {

int Rules_List(const Invocation& inv) {
    if (Is_Port_List(inv))
        return Ports_List(inv);
    const RuleListSpec& spec = Named_List(inv);
    for (const QString& rule : Stored_Rules(spec, Find_User(inv.Need(QStringLiteral("--user"))).id))
        Out(rule);
    return kExitOk;
}

int Rules_Add(const Invocation& inv) {
    if (Is_Port_List(inv))
        return Ports_Add(inv);
    const RuleListSpec& spec = Named_List(inv);
    const long user = Find_User(inv.Need(QStringLiteral("--user"))).id;
    // Every text is checked before any is written, so a refused one leaves the list as it was.
    QStringList texts;
    for (const QString& word : inv.words) {
        const QString text = Prepare_Add_Text(word, spec.addText);
        QString why = Refusal_Of(spec, text);
        if (why.isEmpty())
            why = Duplicate_Words(spec, user, text);
        if (why.isEmpty() && Contains_Ignoring_Case(texts, text))
            why = spec.words.addExists;
        if (!why.isEmpty())
            throw Refusal{why};
        texts.append(text);
    }
    StoreBatch batch;
    if (batch.Open() == 0)
        throw StoreFailed{};
    for (const QString& text : texts)
        Ensure(Add_Rule(batch.Handle(), batch.result, spec, user, text));
    return kExitOk;
}

int Rules_Remove(const Invocation& inv) {
    if (Is_Port_List(inv))
        return Ports_Remove(inv);
    const RuleListSpec& spec = Named_List(inv);
    const long user = Find_User(inv.Need(QStringLiteral("--user"))).id;
    const QStringList stored = Stored_Rules(spec, user);
    QStringList keys;
    for (const QString& word : inv.words) {
        // The store's row goes by its own text, whatever the case it was asked for in.
        const auto it = std::find_if(stored.begin(), stored.end(),
                                     [&](const QString& r) { return r.toLower() == word.toLower(); });
        if (it == stored.end())
            throw Refusal{QStringLiteral("'%1' is not in the list.").arg(word)};
        keys.append(*it);
    }
    StoreBatch batch;
    if (batch.Open() == 0)
        throw StoreFailed{};
    for (const QString& key : keys)
        Ensure(Is_Bypass(spec) ? Remove_Bypass_Exe(batch.Handle(), batch.result, 0, user, key)
                               : Remove_List_Item(batch.Handle(), batch.result, QLatin1String(spec.column),
                                                  QLatin1String(spec.table), key, 0, user));
    return kExitOk;
}

int Rules_Switch(const Invocation& inv, bool on) {
    if (Is_Port_List(inv))
        return Ports_Switch(inv, on);
    const RuleListSpec& spec = Named_List(inv);
    const long user = Find_User(inv.Need(QStringLiteral("--user"))).id;
    if (spec.featureBit == 0)
        throw UsageError{
            QStringLiteral("the %1 list has no switch").arg(inv.Option(QStringLiteral("--list")))};
    Set_Feature_Bit(on, spec.featureBit, 0, user);
    return kExitOk;
}

// Why the page's import would pass over a field; empty when it takes it.
QString Import_Refusal(const ListField& field, const RuleListSpec& spec, const std::optional<QString>& text) {
    if (field.nul)
        return QStringLiteral("it holds a NUL character");
    if (!text)
        return spec.words.addInvalid;
    if (text->contains(u'\''))
        return QStringLiteral("it holds an apostrophe, which the store does not take");
    return QString();
}

int Rules_Import(const Invocation& inv) {
    if (Is_Port_List(inv))
        throw UsageError{QStringLiteral("the port list has no list file")};
    const RuleListSpec& spec = Named_List(inv);
    const long user = Find_User(inv.Need(QStringLiteral("--user"))).id;
    const bool dryRun = inv.Has(QStringLiteral("--dry-run"));
    QSet<QString> listed;
    for (const QString& rule : Stored_Rules(spec, user))
        listed.insert(rule.toLower());

    ListFileInput file(inv.words[0]);
    ListFieldReader& reader = file.Reader();
    StoreBatch batch;
    if (!dryRun && batch.Open() == 0)
        throw StoreFailed{};
    long accepted = 0, duplicates = 0;
    QStringList refused;
    while (!reader.Eof()) {
        const ListField field = reader.Next_Field();
        const qint64 line = reader.Field_Line();
        const std::optional<QString> text = Import_Rule(field, spec);
        QString why = Import_Refusal(field, spec, text);
        if (why.isEmpty() && listed.contains(text->toLower())) {
            ++duplicates;
            continue;
        }
        if (why.isEmpty() && !dryRun && !Add_Rule(batch.Handle(), batch.result, spec, user, *text))
            why = QStringLiteral("the store refused it");
        if (!why.isEmpty()) {
            refused.append(QStringLiteral("line %1: \"%2\": %3").arg(line).arg(field.text.left(80), why));
            continue;
        }
        listed.insert(text->toLower());
        ++accepted;
    }
    if (!dryRun && !batch.Close())
        throw StoreFailed{};
    Out(QStringLiteral("%1 %2, %3 duplicate(s), %4 refused")
            .arg(accepted)
            .arg(dryRun ? QStringLiteral("would be added") : QStringLiteral("added"))
            .arg(duplicates)
            .arg(refused.size()));
    for (const QString& r : refused)
        Out(r);
    return refused.isEmpty() ? kExitOk : kExitRefused;
}

int Rules_Export(const Invocation& inv) {
    if (Is_Port_List(inv))
        throw UsageError{QStringLiteral("the port list has no list file")};
    const RuleListSpec& spec = Named_List(inv);
    const QStringList rules = Stored_Rules(spec, Find_User(inv.Need(QStringLiteral("--user"))).id);
    Write_List_File(inv.words[0], rules);
    return kExitOk;
}

} // namespace

void Add_Rule_Commands(std::vector<Command>& into) {
    const QString rules = QStringLiteral("rules");
    const QStringList subject = {QStringLiteral("--user"), QStringLiteral("--list")};
    const QString lists =
        QStringLiteral(" U is a user's name (\"[All Users...]\" for all users); L is one of: ") +
        List_Names() + u'.';
    into.push_back(
        {rules,
         QStringLiteral("list"),
         QStringLiteral("rules list --user U --list L"),
         QStringLiteral("Prints a user's rules of one list, one a line, in the store's order.") + lists,
         subject,
         {},
         0,
         0,
         Rules_List});
    into.push_back(
        {rules,
         QStringLiteral("add"),
         QStringLiteral("rules add --user U --list L TEXT...  |  rules add --user U --list port --filter F "
                        "[--protocol P] PORT..."),
         QStringLiteral("Adds rules as the list's page does: the same preparation of the text, the "
                        "same checks and the same words for a refusal. Nothing is written unless "
                        "every text is accepted. A port rule takes its filter's text as the port page "
                        "shows it (\"HTTP Filter\", \"Block Completely\", ...) and, without --protocol, the "
                        "protocol the page offers for it.") +
             lists,
         subject + QStringList{QStringLiteral("--filter"), QStringLiteral("--protocol")},
         {},
         1,
         -1,
         Rules_Add});
    into.push_back({rules,
                    QStringLiteral("remove"),
                    QStringLiteral("rules remove --user U --list L TEXT..."),
                    QStringLiteral("Removes rules, found by their text ignoring case.") + lists,
                    subject,
                    {},
                    1,
                    -1,
                    Rules_Remove});
    into.push_back({rules,
                    QStringLiteral("enable"),
                    QStringLiteral("rules enable --user U --list L"),
                    QStringLiteral("Switches the list's feature on for the user.") + lists,
                    subject,
                    {},
                    0,
                    0,
                    [](const Invocation& inv) { return Rules_Switch(inv, true); }});
    into.push_back({rules,
                    QStringLiteral("disable"),
                    QStringLiteral("rules disable --user U --list L"),
                    QStringLiteral("Switches the list's feature off for the user.") + lists,
                    subject,
                    {},
                    0,
                    0,
                    [](const Invocation& inv) { return Rules_Switch(inv, false); }});
    into.push_back(
        {rules,
         QStringLiteral("import"),
         QStringLiteral("rules import --user U --list L FILE [--dry-run]"),
         QStringLiteral("Reads a list file as the list's page imports it (the same cut, case and check) "
                        "and reports what the page keeps silent: how many rules were added, how many "
                        "were listed already, and each refused field with its line and reason. Rules "
                        "accepted are stored even when others are refused; exit 1 when any was "
                        "refused. --dry-run writes nothing.") +
             lists,
         subject,
         {QStringLiteral("--dry-run")},
         1,
         1,
         Rules_Import});
    into.push_back({rules,
                    QStringLiteral("export"),
                    QStringLiteral("rules export --user U --list L FILE"),
                    QStringLiteral("Writes the list to FILE in the pages' list file format (one rule a line, "
                                   "CR LF), replacing the file.") +
                        lists,
                    subject,
                    {},
                    1,
                    1,
                    Rules_Export});
}

} // namespace hv::admin
