// SPDX-License-Identifier: MIT
#include "data/OfflineBasis.h"

#include "data/Catalogue.h"
#include "data/Globals.h"
#include "data/Lookups.h"
#include "platform/dao/Database.h"
#include "platform/dao/SqlText.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Numbers.h"

#include <algorithm>
#include <functional>
#include <utility>

using namespace Qt::StringLiterals;

namespace basis {
namespace {

dao::TableDef OfflineTable() {
  using dao::FieldType;
  const auto field = [](const QString& name, FieldType type) {
    dao::FieldDef def;
    def.name = name;
    def.type = type;
    return def;
  };
  dao::IndexDef key;
  key.name = u"PrimaryKey"_s;
  key.fields = {{u"ID"_s}};
  key.primary = key.unique = key.required = true;
  dao::IndexDef logID;
  logID.name = u"LogID"_s;
  logID.fields = {{u"LogID"_s}};
  return {OfflineTableName(),
          {field(u"ID"_s, FieldType::Long), field(u"LogID"_s, FieldType::Long), field(u"SqlSyntax"_s, FieldType::Memo),
           field(u"Basis"_s, FieldType::Memo)},
          {key, logID}};
}

dao::Database Local() {
  return dao::OpenDatabase(global.localDatabasePath);
}

// A table that may not survive a power cut is there; the row is written to the same file.
void MakeTable(dao::Database& local) {
  try {
    local.CreateTable(OfflineTable());
  } catch (const runtime::Error& error) {
    if (!error.IsDone()) throw;
  }
}

QString FingerprintOf(dao::Database& database, const QString& serverTable, qint64 id) {
  QStringList fields;
  const QList<Row> rows = RowsOf(
      database.OpenRecordset(u"SELECT * FROM "_s + CopyTableOf(serverTable) + u" WHERE ID = "_s + QString::number(id)),
      fields);
  return rows.isEmpty() ? QString() : Fingerprint(rows.first());
}

// The fields that hold the number of another record, and the table of that record.
QList<std::pair<QString, QString>> ReferencesIn(const QString& table) {
  if (table == u"tblItemsItemSpots"_s) return {{u"ItemID"_s, u"tblItems"_s}, {u"ItemSpotID"_s, u"tblItemSpots"_s}};
  if (table != u"tblItems"_s) return {};
  return {{u"Opener"_s, u"tblItemPingles"_s}, {u"Midden"_s, u"tblItemPingles"_s}, {u"Sluiter"_s, u"tblItemPingles"_s}};
}

void AddReferences(Entry& entry, dao::Database& database) {
  const auto add = [&](const QString& table, qint64 id) {
    const bool isKnown = std::any_of(entry.references.begin(), entry.references.end(),
                                     [&](const Reference& known) { return known.table == table && known.id == id; });
    if (!isKnown) entry.references.append({table, id, FingerprintOf(database, table, id)});
  };
  if (entry.keyField == u"ItemID"_s) add(u"tblItems"_s, entry.key);
  for (const auto& [field, table] : ReferencesIn(entry.table)) {
    const qsizetype place = entry.fields.indexOf(field);
    for (const QList<Row>* rows : {&entry.before, &entry.after}) {
      for (const Row& row : *rows) {
        const auto* id = place < 0 ? nullptr : std::get_if<std::int64_t>(&row[static_cast<std::size_t>(place)]);
        if (id != nullptr) add(table, *id);
      }
    }
  }
}

Entry EntryOf(const Target& target, const QString& statement) {
  Entry entry;
  entry.table = ServerTableOf(target.table);
  entry.keyField = target.keyField.mid(target.keyField.lastIndexOf(u'.') + 1);
  entry.key = target.key;
  QString select =
      u"SELECT * FROM "_s + target.table + u" WHERE "_s + entry.keyField + u" = "_s + QString::number(target.key);
  if (target.order) select += u" AND ItemSpotOrder = "_s + QString::number(*target.order);
  dao::Database database = dao::OpenDatabase(target.databasePath);
  const dao::Database::Preview preview = database.PreviewChange(statement, select);
  entry.before = RowsOf(preview.before, entry.fields);
  entry.after = RowsOf(preview.after, entry.fields);
  AddReferences(entry, database);
  return entry;
}

// A log that can take no more rows gives no number.
std::optional<qint32> ExpectedLogID() {
  try {
    return NextID(u"tblOfflineLog"_s, u"ID"_s, global.localDatabasePath);
  } catch (const runtime::Error&) {
    return std::nullopt;
  }
}

bool IsIn(const Row& row, const QList<Row>& rows) {
  return std::any_of(rows.begin(), rows.end(), [&](const Row& other) {
    return std::equal(row.begin(), row.end(), other.begin(), other.end(), Same);
  });
}

// Whether the rows have all of `there` and nothing else of `gone`.
bool Shows(const QList<Row>& rows, const QList<Row>& there, const QList<Row>& gone) {
  return std::all_of(there.begin(), there.end(), [&](const Row& row) { return IsIn(row, rows); }) &&
         std::none_of(gone.begin(), gone.end(), [&](const Row& row) { return !IsIn(row, there) && IsIn(row, rows); });
}

struct Pending {
  qint32 id = 0;
  std::optional<qint32> logID;
  QString statement;
  QString basis;
};

// Only a copy that is as it was before the statement shows that the statement was not executed.
bool IsUndone(const Pending& row) {
  Entry entry;
  try {
    entry = Decode(row.basis.toUtf8());
  } catch (const runtime::Error&) {
    return false;
  }
  dao::Database local = Local();
  const QString table = CopyTableOf(entry.table);
  if (!local.TableNames().contains(table, Qt::CaseInsensitive)) return false;
  QStringList fields;
  const QList<Row> rows = RowsOf(local.OpenRecordset(u"SELECT * FROM "_s + table + u" WHERE "_s + entry.keyField +
                                                     u" = "_s + QString::number(entry.key)),
                                 fields);
  return Shows(rows, entry.before, entry.after);
}

QList<Pending> Rows(const QString& where) {
  dao::Recordset rows =
      Local().OpenRecordset(u"SELECT ID, LogID, SqlSyntax, Basis FROM "_s + OfflineTableName() + where);
  QList<Pending> all;
  for (; !rows.Eof(); rows.MoveNext()) {
    const QVariant logID = rows.Field(u"LogID"_s);
    all += {runtime::ToLong(rows.Field(u"ID"_s)), logID.isNull() ? std::nullopt : std::optional(runtime::ToLong(logID)),
            rows.Field(u"SqlSyntax"_s).toString(), rows.Field(u"Basis"_s).toString()};
  }
  return all;
}

void Delete(qint32 id) {
  Local().Execute(u"DELETE FROM "_s + OfflineTableName() + u" WHERE ID = "_s + QString::number(id));
}

}  // namespace

const QString& OfflineTableName() {
  static const QString name = u"tblOfflineBasis"_s;
  return name;
}

bool HasOfflineTable(const dao::Database& local) {
  return local.TableNames().contains(OfflineTableName(), Qt::CaseInsensitive);
}

void Record(const Target& target, const QString& statement, const QString& logged, Recorded& recorded) {
  const QByteArray entry = Encode(EntryOf(target, statement));
  dao::Database local = Local();
  if (!HasOfflineTable(local)) MakeTable(local);
  const Recorded row{NextID(OfflineTableName(), u"ID"_s, global.localDatabasePath), ExpectedLogID()};
  recorded = row;
  local.Execute(u"INSERT INTO "_s + OfflineTableName() + u" (ID, LogID, SqlSyntax, Basis) VALUES ("_s +
                QString::number(row.id) + u", "_s + (row.logID ? QString::number(*row.logID) : u"NULL"_s) + u", "_s +
                dao::TextLiteral(logged) + u", "_s + dao::TextLiteral(QString::fromUtf8(entry)) + u")"_s);
}

void Drop(const Recorded& recorded) noexcept {
  try {
    Delete(recorded.id);
  } catch (...) {
    // FindUnlogged drops it before the next statement.
  }
}

void SetLogID(qint32 id, qint32 logID) {
  Local().Execute(u"UPDATE "_s + OfflineTableName() + u" SET LogID = "_s + QString::number(logID) + u" WHERE ID = "_s +
                  QString::number(id));
}

QList<Unlogged> FindUnlogged(const std::function<bool(qint32 id)>& isQueued) {
  if (!HasOfflineTable(Local())) return {};
  const qint32 last = NextID(OfflineTableName(), u"ID"_s, global.localDatabasePath) - 1;
  const std::optional<qint32> next = ExpectedLogID();
  if (!next) return {};  // the log takes no row now
  const auto isPending = [&](const Pending& row) { return (!row.logID || *row.logID >= *next) && !isQueued(row.id); };
  const QList<Pending> newest = Rows(u" WHERE ID = "_s + QString::number(last));
  if (newest.isEmpty() || !isPending(newest.first())) return {};
  QList<Pending> pending = Rows(u" ORDER BY ID"_s);
  erase_if(pending, std::not_fn(isPending));
  // Expected numbers follow the log: a higher one shows that its rows were removed by another program.
  const bool isEmptied =
      std::any_of(pending.begin(), pending.end(), [&](const Pending& row) { return row.logID && *row.logID > *next; });
  QList<Unlogged> unlogged;
  for (const Pending& row : pending) {
    if (isEmptied || (row.id == last && IsUndone(row))) {
      Delete(row.id);
    } else {
      unlogged += {row.id, row.statement};
    }
  }
  return unlogged;
}

}  // namespace basis
