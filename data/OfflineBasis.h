// SPDX-License-Identifier: MIT
#pragma once

#include "data/ExportBasis.h"

#include <QList>
#include <QString>

#include <functional>
#include <optional>

namespace dao {
class Database;
struct TableDef;
}  // namespace dao

// The rows that each logged statement changes, before and after it. They are in the table tblOfflineBasis of the local
// database, which is made when it is first needed, from just before the statement is executed until the statement is
// exported. They cannot be read later: closing the item-spot list refreshes a copy table from the server.
//
// A row is written before its statement, with what the statement will do. So a program that is killed between a
// statement and its log row leaves enough to log it at the next start (data/LogQueue.h).
namespace basis {

// The rows that a statement changes: those of a table whose key field has this number.
struct Target {
  QString databasePath;  // path text
  QString table;         // as the statement names it
  QString keyField;      // "ID" or "ItemID", with or without the table's name in front
  qint32 key = 0;
  std::optional<qint32> order;  // of one link of an item: its ItemSpotOrder
};

// A row of tblOfflineBasis: its key, and the number of the log row that its statement has or is expected to get.
struct Recorded {
  qint32 id = 0;
  std::optional<qint32> logID;
};

// tblOfflineBasis: ID, LogID, SqlSyntax (the statement as it is logged, but with exact texts) and Basis (an Entry).
const QString& OfflineTableName();
bool HasOfflineTable(const dao::Database& local);

// Writes what the statement will change. `logged` is the statement as it will be logged, with the server table's name.
// Throws runtime::Error when the statement will fail or the row cannot be written; after one that IsDone the row is
// written and `recorded` is set.
void Record(const Target& target, const QString& statement, const QString& logged, Recorded& recorded);
// Deletes the row of a statement that was not executed. After a failure FindUnlogged deletes it.
void Drop(const Recorded& recorded) noexcept;
// Stores the number of the log row that a statement gets when it is not the expected one. Throws runtime::Error.
void SetLogID(qint32 id, qint32 logID);

struct Unlogged {
  qint32 id = 0;  // of the row of tblOfflineBasis
  QString statement;
};
// The statements, in their order, that were executed and are neither in the log nor known to `isQueued`. If the last
// one was not executed, or changed nothing, its row is deleted. Throws runtime::Error.
QList<Unlogged> FindUnlogged(const std::function<bool(qint32 id)>& isQueued);

}  // namespace basis
