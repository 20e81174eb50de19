// SPDX-License-Identifier: MIT
#include "data/Writes.h"

#include "data/Globals.h"
#include "data/LogQueue.h"
#include "data/Lookups.h"
#include "data/OfflineBasis.h"
#include "data/Statements.h"
#include "platform/dao/Database.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Trapped.h"

#include <optional>
#include <utility>

using namespace Qt::StringLiterals;
using runtime::Trapped;

namespace {

void Execute(const QString& statement, const QString& databasePath) {
  dao::Database database = dao::OpenDatabase(databasePath);
  database.Execute(statement);
}

// Outcome of the last write procedure that logs.
struct LastWrite {
  bool isExecuted = false;
  bool waitsForLog = false;
  std::optional<runtime::Error> uncertain;  // first error that said: done, but may not survive a power cut
};
LastWrite lastWrite;

// After an error that says "done, but may not survive a power cut" the procedure continues; Write reports it last.
void ExecuteNotingUncertain(const QString& statement, const QString& databasePath) {
  try {
    Execute(statement, databasePath);
  } catch (const runtime::Error& error) {
    if (!error.IsDone()) throw;
    if (!lastWrite.uncertain) lastWrite.uncertain = error;
  }
}

// Stores the rows that a statement changes, before it is executed.
basis::Recorded RecordBasis(const basis::Target& target, const QString& statement, const QString& logged) {
  QueueUnloggedStatements();
  basis::Recorded recorded;
  try {
    basis::Record(target, statement, logged, recorded);
  } catch (const runtime::Error& error) {
    if (!error.IsDone()) throw;
    lastWrite.uncertain = error;
  }
  return recorded;
}

// Runs the body of a write procedure that logs.
template <class Body>
bool Write(const char* procedure, Body&& body) {
  lastWrite = {};
  return Trapped(procedure, false, [&] {
    const bool logged = body();
    if (lastWrite.uncertain) throw runtime::Error(*lastWrite.uncertain);
    return logged;
  });
}

// The statements of the queue are older, so they are logged first.
bool LogQueued() {
  const bool logged = Trapped("Insert_tblOfflineLog", false, [] {
    LogQueuedStatements();
    return true;
  });
  if (logged) Trapped("AppendToAudioList", [] { AddQueuedAudioLines(); });
  return logged;
}

// Where a statement's basis already has the ID of its log row, nothing is written.
bool NoteLogID(const basis::Recorded& recorded, qint32 id) {
  if (recorded.logID == id) return true;
  return Trapped("Insert_tblOfflineLog", false, [&] {
    basis::SetLogID(recorded.id, id);
    return true;
  });
}

// Appends a statement to the offline log. After a failure, which has been shown, returns false; the statement is then
// in the queue.
bool AppendToLog(const QString& statement, const basis::Recorded& recorded) {
  std::optional<qint32> id;
  if (LogQueued()) id = GetNewIDIfAny(u"tblOfflineLog"_s, u"ID"_s, global.localDatabasePath);
  if (id && NoteLogID(recorded, *id) && Insert_tblOfflineLog(*id, statement)) return true;
  lastWrite.waitsForLog = true;
  QueueForLog(statement, id, recorded.id);
  return false;
}

// Executes the statement of a write procedure that logs.
void ExecuteWrite(const QString& statement, const QString& databasePath) {
  ExecuteNotingUncertain(statement, databasePath);
  lastWrite.isExecuted = true;
}

// Executes it and logs it as `logged`.
bool ExecuteAndLog(const basis::Target& target, const QString& statement, const QString& logged) {
  const basis::Recorded recorded = RecordBasis(target, statement, logged);
  try {
    ExecuteWrite(statement, target.databasePath);
  } catch (...) {
    basis::Drop(recorded);
    throw;
  }
  return AppendToLog(logged, recorded);
}

// The log has the server table's name in place of the copy table's.
bool ExecuteAndLogOffline(const basis::Target& target, const QString& statement, const QString& copyTable,
                          const QString& serverTable) {
  if (!global.online) return ExecuteAndLog(target, statement, QString(statement).replace(copyTable, serverTable));
  ExecuteWrite(statement, target.databasePath);
  return true;
}

bool WriteItems(const basis::Target& target, const QString& statement) {
  return ExecuteAndLogOffline(target, statement, u"tblCopie_Items"_s, u"tblItems"_s);
}

bool WriteItemSpots(const basis::Target& target, const QString& statement) {
  return ExecuteAndLogOffline(target, statement, u"tblCopie_ItemSpots"_s, u"tblItemSpots"_s);
}

bool WriteItemPingles(const basis::Target& target, const QString& statement) {
  return ExecuteAndLogOffline(target, statement, u"tblCopie_ItemPingles"_s, u"tblItemPingles"_s);
}

basis::Target RowOf(qint32 id, const QString& databasePath, const QString& table) {
  return {databasePath, table, u"ID"_s, id, {}};
}

// The log's form of a DELETE. Deletes of items and links keep the copy table's name, and because of the misspelt name
// deletes of jingles are never logged. The companion tool relies on both.
QString DeleteForLog(const QString& statement) {
  QString text = statement;
  text.replace(u"tblCopie_ItemSpots"_s, u"tblItemSpots"_s);
  return text.replace(u"tblCopie_lItemPingles"_s, u"tblItemPingles"_s);
}

bool IsLoggedDelete(const QString& table) {
  return table == u"tblCopie_ItemsItemSpots"_s || table == u"tblCopie_Items"_s || table == u"tblCopie_ItemSpots"_s ||
         table == u"tblCopie_lItemPingles"_s;
}

QString CopyInto(const QString& copyTable, const QString& localPath, const QString& select) {
  return u"INSERT INTO "_s + copyTable + u" IN \"" + localPath + u"\" " + select;
}

}  // namespace

bool Insert_tblItems(const ItemRow& row, const QString& databasePath, const QString& table) {
  return Write(__func__,
               [&] { return WriteItems(RowOf(row.id, databasePath, table), statements::InsertItem(row, table)); });
}

bool Update_tblItems(const ItemRow& row, const QString& databasePath, const QString& table) {
  return Write(__func__,
               [&] { return WriteItems(RowOf(row.id, databasePath, table), statements::UpdateItem(row, table)); });
}

bool Update_tblItems_Aktief(qint32 id, qint32 aktief, const QString& databasePath, const QString& table) {
  return Write(__func__,
               [&] { return WriteItems(RowOf(id, databasePath, table), statements::SetAktief(id, aktief, table)); });
}

bool Insert_tblItemsItemSpots(const ItemsItemSpotsRow& row, const QString& databasePath, const QString& table) {
  return Write(__func__, [&] {
    const basis::Target target{databasePath, table, u"ItemID"_s, row.itemID, row.itemSpotOrder};
    return ExecuteAndLogOffline(target, statements::InsertLink(row, table), u"tblCopie_ItemsItemSpots"_s,
                                u"tblItemsItemSpots"_s);
  });
}

bool Insert_tblItemSpots(const ItemSpotRow& row, const QString& databasePath, const QString& table) {
  return Write(__func__, [&] {
    return WriteItemSpots(RowOf(row.id, databasePath, table), statements::InsertItemSpot(row, table));
  });
}

bool Update_tblItemSpots(const ItemSpotRow& row, const QString& databasePath, const QString& table) {
  return Write(__func__, [&] {
    return WriteItemSpots(RowOf(row.id, databasePath, table), statements::UpdateItemSpot(row, table));
  });
}

bool Update_tblItemSpots_Aktief(qint32 id, qint32 aktief, const QString& databasePath, const QString& table) {
  return Write(__func__, [&] {
    return WriteItemSpots(RowOf(id, databasePath, table), statements::SetAktief(id, aktief, table));
  });
}

bool Reset_tblItemSpots_AantalGedraaid(qint32 id, const QString& databasePath, const QString& table) {
  lastWrite = {};
  try {
    return WriteItemSpots(RowOf(id, databasePath, table), statements::ResetAantalGedraaid(id, table));
  } catch (...) {
    return false;  // silent, because it is called for every spot of an item
  }
}

bool Insert_tblItemPingles(const ItemPingleRow& row, const QString& databasePath, const QString& table) {
  return Write(__func__, [&] {
    return WriteItemPingles(RowOf(row.id, databasePath, table), statements::InsertItemPingle(row, table));
  });
}

bool Update_tblItemPingles(const ItemPingleRow& row, const QString& databasePath, const QString& table) {
  return Write(__func__, [&] {
    return WriteItemPingles(RowOf(row.id, databasePath, table), statements::UpdateItemPingle(row, table));
  });
}

bool Delete_tblBeheer(qint32 id, const QString& table, const QString& keyField, const QString& databasePath) {
  return Write(__func__, [&] {
    const QString statement = statements::Delete(id, table, keyField);
    if (!global.online && IsLoggedDelete(table)) {
      return ExecuteAndLog({databasePath, table, keyField, id, {}}, statement, DeleteForLog(statement));
    }
    ExecuteWrite(statement, databasePath);
    return true;
  });
}

bool WasExecuted() {
  return lastWrite.isExecuted;
}

bool WaitsForLog() {
  return lastWrite.waitsForLog;
}

bool DeleteAllInTable(const QString& table, const QString& databasePath) {
  return Trapped(__func__, false, [&] {
    Execute(statements::DeleteAll(table), databasePath);
    return true;
  });
}

bool Insert_tblOfflineLog(qint32 id, const QString& statement) {
  return Trapped(__func__, false, [&] {
    ExecuteNotingUncertain(statements::InsertLog(id, statement), global.localDatabasePath);
    return true;
  });
}

bool TransItemSpotsToLocal(const QString& sourcePath, const QString& localPath) {
  return Trapped(__func__, false, [&] {
    Execute(CopyInto(u"tblCopie_ItemSpots"_s, localPath, u"SELECT * FROM tblItemSpots"_s), sourcePath);
    return true;
  });
}

bool TransItemPinglesToLocal(const QString& sourcePath, const QString& localPath) {
  return Trapped(__func__, false, [&] {
    const QString select =
        u"SELECT tblItemPingles.ID, tblItemPingles.Naam, tblItemPingles.Path, tblItemPingles.LengteSec, "
        u"tblItemPingles.StartPunt, tblItemPingles.Mixpunt, tblItemPingles.Aktief FROM tblItemPingles"_s;
    Execute(CopyInto(u"tblCopie_ItemPingles"_s, localPath, select), sourcePath);
    return true;
  });
}

bool TransItemsToLocal(const QString& sourcePath, const QString& localPath) {
  return Trapped(__func__, false, [&] {
    Execute(CopyInto(u"tblCopie_Items"_s, localPath, u"SELECT * FROM tblItems"_s), sourcePath);
    return true;
  });
}

bool TransItemsItemSpotsToLocal(const QString& sourcePath, const QString& localPath) {
  return Trapped(__func__, false, [&] {
    Execute(CopyInto(u"tblCopie_ItemsItemSpots"_s, localPath, u"SELECT * FROM tblItemsItemSpots"_s), sourcePath);
    return true;
  });
}
