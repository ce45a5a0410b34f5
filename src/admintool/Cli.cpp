#include "admintool/Cli.h"

#include "store/modDB.h"

#include <cstdio>

namespace hv::admin {

namespace {

const QStringList kGlobalValueOptions = {QStringLiteral("--store")};

void Print(FILE* to, const QString& line) {
    std::fputs(line.toLocal8Bit().constData(), to);
    std::fputc('\n', to);
}

bool Is_Help(const QString& arg) {
    return arg == QLatin1String("--help") || arg == QLatin1String("-h");
}

QString Usage_Line(const Command& c) {
    return QStringLiteral("halvenorts-admin [--store FILE] ") + c.synopsis;
}

void Print_Overview(FILE* to, const std::vector<Command>& commands, const QString& group = QString()) {
    Print(to, QStringLiteral("usage:"));
    for (const Command& c : commands)
        if (group.isEmpty() || c.group == group)
            Print(to, QStringLiteral("  ") + Usage_Line(c));
    Print(to, QStringLiteral("The store is FILE, else hvpolicy.iil in $HALVENORTS_WINDIR (default "
                             "/var/lib/halvenorts). Each command has --help."));
}

void Print_Command_Help(const Command& c) {
    Print(stdout, QStringLiteral("usage: ") + Usage_Line(c));
    Print(stdout, QString());
    Print(stdout, c.summary);
}

int Usage_Failure(const QString& why, const Command* c, const std::vector<Command>& all,
                  const QString& group) {
    Print(stderr, QStringLiteral("halvenorts-admin: ") + why);
    if (c)
        Print(stderr, QStringLiteral("usage: ") + Usage_Line(*c));
    else
        Print_Overview(stderr, all, group);
    return kExitUsage;
}

} // namespace

QString Invocation::Need(const QString& option) const {
    const auto it = options.find(option);
    if (it == options.end() || it->isEmpty())
        throw UsageError{option + QStringLiteral(" is required")};
    return *it;
}

void Out(const QString& line) {
    Print(stdout, line);
}

void Note(const QString& line) {
    Print(stderr, line);
}

int Run_Command_Line(const std::vector<Command>& commands, const QStringList& args) {
    // The store may be named before the group as well as among a command's options.
    QStringList rest;
    QString store;
    for (int i = 0; i < args.size(); ++i) {
        if (args[i] == QLatin1String("--store") && i + 1 < args.size())
            store = args[++i];
        else if (args[i].startsWith(QLatin1String("--store=")))
            store = args[i].mid(8);
        else
            rest.append(args[i]);
    }
    if (rest.isEmpty())
        return Usage_Failure(QStringLiteral("a command is required"), nullptr, commands, QString());
    if (Is_Help(rest[0])) {
        Print_Overview(stdout, commands);
        return kExitOk;
    }
    const QString group = rest[0];
    const bool knownGroup =
        std::any_of(commands.begin(), commands.end(), [&](const Command& c) { return c.group == group; });
    if (!knownGroup)
        return Usage_Failure(QStringLiteral("unknown command '%1'").arg(group), nullptr, commands, QString());
    // A group of one command ("check") takes its options straight after its name.
    const Command* command = nullptr;
    int first = 2;
    for (const Command& c : commands)
        if (c.group == group && c.verb.isEmpty())
            command = &c, first = 1;
    if (!command && (rest.size() < 2 || Is_Help(rest[1]))) {
        if (rest.size() >= 2) {
            Print_Overview(stdout, commands, group);
            return kExitOk;
        }
        return Usage_Failure(QStringLiteral("'%1' needs a command").arg(group), nullptr, commands, group);
    }
    for (const Command& c : commands)
        if (!command && c.group == group && c.verb == rest[1])
            command = &c;
    if (!command)
        return Usage_Failure(QStringLiteral("unknown command '%1 %2'").arg(group, rest[1]), nullptr, commands,
                             group);

    Invocation inv;
    bool wordsOnly = false;
    for (int i = first; i < rest.size(); ++i) {
        const QString& arg = rest[i];
        if (!wordsOnly && arg == QLatin1String("--")) {
            wordsOnly = true;
        } else if (!wordsOnly && Is_Help(arg)) {
            Print_Command_Help(*command);
            return kExitOk;
        } else if (!wordsOnly && arg.startsWith(QLatin1String("--"))) {
            const qsizetype eq = arg.indexOf(u'=');
            const QString name = eq < 0 ? arg : arg.left(eq);
            if (command->flagOptions.contains(name) && eq < 0) {
                inv.flags.insert(name);
            } else if (command->valueOptions.contains(name)) {
                if (eq >= 0)
                    inv.options[name] = arg.mid(eq + 1);
                else if (i + 1 < rest.size())
                    inv.options[name] = rest[++i];
                else
                    return Usage_Failure(name + QStringLiteral(" needs a value"), command, commands, group);
            } else {
                return Usage_Failure(QStringLiteral("unknown option '%1'").arg(arg), command, commands,
                                     group);
            }
        } else {
            inv.words.append(arg);
        }
    }
    if (inv.words.size() < command->minWords ||
        (command->maxWords >= 0 && inv.words.size() > command->maxWords))
        return Usage_Failure(QStringLiteral("wrong number of arguments"), command, commands, group);

    Set_Db_Path(store);
    try {
        return command->run(inv);
    } catch (const UsageError& e) {
        return Usage_Failure(e.why, command, commands, group);
    } catch (const Refusal& r) {
        Print(stderr, QStringLiteral("halvenorts-admin: ") + r.message);
        return kExitRefused;
    }
}

} // namespace hv::admin
