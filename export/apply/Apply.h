// SPDX-License-Identifier: MIT
#pragma once

#include "export/apply/Conflicts.h"
#include "export/apply/ExportFile.h"
#include "export/apply/Ledger.h"
#include "export/apply/Report.h"

#include <QString>

#include <functional>
#include <vector>

// Exports of the offline log, carried out on the shared database: each file whole, once, in a transaction. What two
// planners changed to different values waits for a person (Conflicts.h); all else goes through. Paths are path texts; a
// database is a file or the address of a schema on a server. Every failure is a runtime::Error, and nothing was changed
// by the file that it is about.
namespace apply {

struct Options {
  QString source;           // name of the workstation that made the exports; empty: what each file says (SourceOf)
  QString who;              // by whom, for the ledger
  bool outOfOrder = false;  // also a file that is older than one of this workstation that was processed
  // Called now and then with the statements that are done and their number.
  std::function<void(int done, int all)> progress;
};

// What would happen, file after file. Changes nothing; takes the writer's turn for a moment.
std::vector<Result> Plan(const QString& database, const std::vector<ExportFile>& files, const Options& options);

// Carries out files in their order, all in one transaction: after an error nothing of any was. A file that was
// processed before changes nothing, and its result says so.
std::vector<Result> CarryOut(const QString& database, const std::vector<ExportFile>& files, const Options& options);
Result CarryOut(const QString& database, const ExportFile& file, const Options& options);

// The workstation that a file's basis tells: its computer and program folder. Empty without one, and for the bases of
// an earlier version that tell only a drive, the same for every program folder of the computer.
QString SourceOf(const ExportFile& file);

// The order in which files are carried out: by the stamps in their names, those without one last.
void SortByStamp(std::vector<ExportFile>& files);

}  // namespace apply
