// SPDX-License-Identifier: MIT
#include "export/apply/Apply.h"

#include "export/apply/Run.h"
#include "platform/dao/Database.h"
#include "platform/dao/StatementTransaction.h"
#include "platform/runtime/Error.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace apply {
namespace {

Options WithSource(const Options& options, const ExportFile& file) {
  Options own = options;
  if (own.source.isEmpty()) own.source = SourceOf(file);
  if (own.source.isEmpty()) {
    throw runtime::Error(
        u"Het bestand '%1' is niet verwerkt: het zegt niet van welk werkstation het komt. Vul die naam in."_s.arg(
            file.path));
  }
  return own;
}

std::vector<Result> RunAll(dao::StatementTransaction& transaction, const std::vector<ExportFile>& files,
                           const Options& options) {
  std::vector<Result> results;
  for (const ExportFile& file : files) {
    const Options own = WithSource(options, file);
    results.push_back(Run(transaction, file, own).Do());
  }
  return results;
}

}  // namespace

std::vector<Result> Plan(const QString& database, const std::vector<ExportFile>& files, const Options& options) {
  dao::StatementTransaction transaction(dao::OpenDatabase(database));
  return RunAll(transaction, files, options);
}

// Files that were processed are looked up first without a writer's turn, so that not even a lock is written.
std::vector<Result> CarryOut(const QString& database, const std::vector<ExportFile>& files, const Options& options) {
  dao::Database opened = dao::OpenDatabase(database);
  const QList<Processed> ledger = ReadLedger(opened);
  std::vector<Result> results;
  for (const ExportFile& file : files) {
    if (const auto processed = FindProcessed(ledger, file, WithSource(options, file).source))
      results.push_back(DoneBefore(file, *processed));
  }
  if (results.size() == files.size()) return results;
  dao::StatementTransaction transaction(opened);
  results = RunAll(transaction, files, options);
  if (!std::ranges::all_of(results, &Result::doneBefore)) transaction.Commit();
  return results;
}

Result CarryOut(const QString& database, const ExportFile& file, const Options& options) {
  return CarryOut(database, std::vector{file}, options).front();
}

QString SourceOf(const ExportFile& file) {
  const QString source = file.basis ? file.basis->source : QString();
  const bool isDriveOnly = source.size() > 2 && source.endsWith(u':') && source[source.size() - 3] == u' ';
  return isDriveOnly ? QString() : source;
}

void SortByStamp(std::vector<ExportFile>& files) {
  std::ranges::stable_sort(files, {}, [](const ExportFile& file) {
    return std::pair(file.stamp.isEmpty(), file.stamp.isEmpty() ? file.name : file.stamp);
  });
}

}  // namespace apply
