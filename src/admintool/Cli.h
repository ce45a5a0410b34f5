#pragma once
// The shape every subcommand of halvenorts-admin shares: words and options parsed by one table, help
// printed from it, and the three ways a command ends (done, refused in the console's words, bad usage).
#include <QMap>
#include <QSet>
#include <QString>
#include <QStringList>
#include <functional>
#include <vector>

namespace hv::admin {

inline constexpr int kExitOk = 0;
inline constexpr int kExitRefused = 1;
inline constexpr int kExitUsage = 2;

// How the tool was called is wrong: the reason and the command's usage go to standard error, exit 2.
struct UsageError {
    QString why;
};
// The request is refused in the console's own words: the words go to standard error, exit 1.
struct Refusal {
    QString message;
};

struct Invocation {
    QStringList words;              // what follows the group and the verb, options taken out
    QMap<QString, QString> options; // "--user" -> "jsmith"
    QSet<QString> flags;            // "--dry-run"

    // An option the command cannot do without; its absence is a usage error.
    QString Need(const QString& option) const;
    QString Option(const QString& option, const QString& otherwise = QString()) const {
        return options.value(option, otherwise);
    }
    bool Has(const QString& flag) const { return flags.contains(flag); }
};

struct Command {
    QString group;
    QString verb;
    QString synopsis; // what follows "halvenorts-admin": "rules add --user U --list L TEXT"
    QString summary;
    QStringList valueOptions; // options that take a value
    QStringList flagOptions;
    int minWords = 0;
    int maxWords = 0; // -1: any number
    std::function<int(const Invocation&)> run;
};

// Lines for the user: results on standard output, everything else on standard error.
void Out(const QString& line);
void Note(const QString& line);

// The commands of each group, in the order help lists them.
void Add_User_Commands(std::vector<Command>& into);
void Add_Rule_Commands(std::vector<Command>& into);
void Add_Schedule_Commands(std::vector<Command>& into);
void Add_Report_Commands(std::vector<Command>& into);
void Add_Policy_Commands(std::vector<Command>& into);
void Add_Check_Commands(std::vector<Command>& into);

// Parses the command line (without the program name) against the table and runs the command.
int Run_Command_Line(const std::vector<Command>& commands, const QStringList& args);

} // namespace hv::admin
