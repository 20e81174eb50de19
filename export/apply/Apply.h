// SPDX-License-Identifier: MIT
#pragma once

#include "export/apply/Conflicts.h"
#include "export/apply/ExportFile.h"
#include "export/apply/Ledger.h"
#include "export/apply/Report.h"

#include <QString>

#include <functional>
#include <vector>

// Applies exports of the offline log to the shared database: each file as a whole, once, in one transaction. A field
// that two planners changed to different values waits for a decision (Conflicts.h); everything else is applied. Paths
// are path texts; a database is a file or the address of a schema on a server. Every failure is a runtime::Error; then
// nothing of that file was applied.
namespace apply {

struct Options {
  QString source;           // name of the workstation that made the exports; empty: what each file says (SourceOf)
  QString who;              // by whom, for the ledger
  bool outOfOrder = false;  // also a file that is older than one of the same workstation that was applied already
  // Called now and then with the statements that are done and their number.
  std::function<void(int done, int all)> progress;
};

// What would happen, file after file. Changes nothing; takes the writer's turn for a moment.
std::vector<Result> Plan(const QString& database, const std::vector<ExportFile>& files, const Options& options);

// Applies files in their order, all in one transaction: after an error nothing of any file was applied. A file that was
// applied before changes nothing, and its result says so.
std::vector<Result> CarryOut(const QString& database, const std::vector<ExportFile>& files, const Options& options);
Result CarryOut(const QString& database, const ExportFile& file, const Options& options);

// The workstation that a file's basis names: computer and program folder. Empty without a basis, and for a basis of an
// earlier version that names only a drive, which is the same for every program folder of the computer.
QString SourceOf(const ExportFile& file);

// Sorts files into the order in which they are applied: by the stamps in their names, those without one last.
void SortByStamp(std::vector<ExportFile>& files);

}  // namespace apply
