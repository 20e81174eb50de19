// SPDX-License-Identifier: MIT
#include "export/apply/Apply.h"

#include "export/apply/Run.h"
#include "platform/dao/Database.h"
#include "platform/dao/StatementTransaction.h"
#include "platform/runtime/Error.h"

#include <algorithm>

namespace apply {

std::vector<Result> Plan(const QString& database, const std::vector<ExportFile>& files, const Options& options) {
  dao::StatementTransaction transaction(dao::OpenDatabase(database));
  std::vector<Result> results;
  for (const ExportFile& file : files)
    results.push_back(Run(transaction, file, options).Do());
  return results;
}

// A file that was processed is looked up first without a writer's turn, so that not even a lock is written.
Result CarryOut(const QString& database, const ExportFile& file, const Options& options) {
  dao::Database opened = dao::OpenDatabase(database);
  if (const auto processed = FindProcessed(ReadLedger(opened), file, options.source))
    return DoneBefore(file, *processed);
  dao::StatementTransaction transaction(opened);
  Result result = Run(transaction, file, options).Do();
  if (!result.doneBefore) transaction.Commit();
  return result;
}

void SortByStamp(std::vector<ExportFile>& files) {
  std::ranges::stable_sort(files, {}, [](const ExportFile& file) {
    return std::pair(file.stamp.isEmpty(), file.stamp.isEmpty() ? file.name : file.stamp);
  });
}

}  // namespace apply
