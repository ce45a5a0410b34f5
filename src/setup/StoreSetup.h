#pragma once
// Lays down the policy store as the installer does. The console itself never creates the store; this is
// used by the installer tool (halvenorts-setup), the scenario driver and the tests.
#include <QDateTime>
#include <QString>
#include <QStringList>

namespace hv {

inline constexpr long kDefaultDemoReportRows = 4000;

// The store's file name inside the Windows directory.
QString Store_File_Name(); // "hvpolicy.iil"

// Writes a new store at `path` (every table, index and key row). An existing file is kept and the call
// fails unless `force` is set, in which case the file is replaced. The folder is created when missing.
// On failure `error` (when given) holds a sentence for the user and nothing is left at `path` that was
// not there before.
bool Create_Store(const QString& path, bool force, QString* error);

// Switches an existing store to write-ahead-log journal mode, in which the enforcement components'
// reads and the console's writes never block each other (Create_Store lays stores down that way).
// Nothing else in the file changes. Fails when the file is missing, no store, or busy.
bool Upgrade_Store(const QString& path, QString* error);

// Adds what a newcomer needs to see the console alive to a store made by Create_Store: Single User Mode,
// `osUser` and a few more users, rules on several pages, two schedules and `reportRows` usage rows of
// the four report kinds spread over the 30 days before `now`. One transaction.
bool Fill_Demo(const QString& path, long reportRows, const QString& osUser, const QDateTime& now,
               QString* error);

// Reads the store at `path` without changing it and says, in plain words, what keeps it from being a store
// the console can use: a file that is not a store, a table or column that is missing, a key row that is
// missing, and what SQLite's integrity check finds. No problem: an empty list.
QStringList Check_Store(const QString& path);

} // namespace hv
