// SPDX-License-Identifier: MIT
#pragma once

#include "export/apply/ExportFile.h"
#include "export/apply/Report.h"
#include "platform/dao/Database.h"
#include "platform/dao/StatementTransaction.h"

#include <QDateTime>
#include <QList>
#include <QString>

#include <array>
#include <optional>

namespace apply {

// The tables in which the shared database remembers what was processed. They are made when the first file is processed.
namespace ledger {
inline const QString kFiles = QStringLiteral("tblVerwerkt");
inline const QString kNumbers = QStringLiteral("tblVerwerktNummers");
inline const QString kConflicts = QStringLiteral("tblVerwerktBotsingen");
QList<dao::TableDef> Tables();
}  // namespace ledger

// An export that was processed: a row of tblVerwerkt.
struct Processed {
  qint64 id = 0;
  QString exportID;  // of its basis; empty when it had none
  QString source;    // the workstation
  QString name;      // of the file
  QString stamp;     // 14 digits, or empty
  QString digest;
  QDateTime moment;
  QString who;
  int statements = 0;
  QString summary;                  // as Result::Summary
  std::array<qint64, 3> highest{};  // number of items, spots, jingles that was ever seen, by Table
};

// All, oldest first; none when nothing was processed yet.
QList<Processed> ReadLedger(dao::Database database);
QList<Processed> ReadLedger(dao::StatementTransaction& transaction);

// The one that is this export, whatever its file is called now.
std::optional<Processed> FindProcessed(const QList<Processed>& ledger, const ExportFile& file, const QString& source);

// The result of a file that was processed before.
Result DoneBefore(const ExportFile& file, const Processed& processed);

// Makes the tables that are missing.
void MakeLedgerTables(dao::StatementTransaction& transaction);
void AddToLedger(dao::StatementTransaction& transaction, const Processed& row);

}  // namespace apply
