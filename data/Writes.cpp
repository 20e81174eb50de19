// SPDX-License-Identifier: MIT
#include "data/Writes.h"

#include "data/Globals.h"
#include "data/KeptStatements.h"
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
  bool isCarriedOut = false;
  bool waitsForLog = false;
  std::optional<runtime::Error> uncertain;  // first error that said: done, but may not survive a power cut
};
LastWrite lastWrite;

// A statement that may not survive a power cut has been executed, so the procedure continues; Write reports it last.
void ExecuteOnce(const QString& statement, const QString& databasePath) {
  try {
    Execute(statement, databasePath);
  } catch (const runtime::Error& error) {
    if (!error.IsDone()) throw;
    if (!lastWrite.uncertain) lastWrite.uncertain = error;
  }
}

// Keeps the rows that a statement changes, before it is executed.
basis::Kept KeepBasis(const basis::Target& target, const QString& statement, const QString& logged) {
  KeepUnloggedStatements();
  basis::Kept kept;
  try {
    basis::Keep(target, statement, logged, kept);
  } catch (const runtime::Error& error) {
    if (!error.IsDone()) throw;
    lastWrite.uncertain = error;
  }
  return kept;
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

// Kept statements are older, so they are logged first.
bool LogKept() {
  const bool logged = Trapped("Insert_tblOfflineLog", false, [] {
    LogKeptStatements();
    return true;
  });
  if (logged) Trapped("AppendToAudioList", [] { AddKeptAudioLines(); });
  return logged;
}

// Where a statement's basis already has the ID of its log row, nothing is written.
bool NoteLogID(const basis::Kept& kept, qint32 id) {
  if (kept.logID == id) return true;
  return Trapped("Insert_tblOfflineLog", false, [&] {
    basis::SetLogID(kept.id, id);
    return true;
  });
}

// Appends a statement to the offline log. Returns false after a failure, which has been shown; the statement is kept.
bool AppendToLog(const QString& statement, const basis::Kept& kept) {
  std::optional<qint32> id;
  if (LogKept()) id = GetNewIDIfAny(u"tblOfflineLog"_s, u"ID"_s, global.localDatabasePath);
  if (id && NoteLogID(kept, *id) && Insert_tblOfflineLog(*id, statement)) return true;
  lastWrite.waitsForLog = true;
  KeepStatement(statement, id, kept.id);
  return false;
}

// Executes the statement of a write procedure that logs.
void CarryOut(const QString& statement, const QString& databasePath) {
  ExecuteOnce(statement, databasePath);
  lastWrite.isCarriedOut = true;
}

// The same, and logs it as `logged`.
bool CarryOutAndLog(const basis::Target& target, const QString& statement, const QString& logged) {
  const basis::Kept kept = KeepBasis(target, statement, logged);
  try {
    CarryOut(statement, target.databasePath);
  } catch (...) {
    basis::Drop(kept);
    throw;
  }
  return AppendToLog(logged, kept);
}

// The log has the server table's name in place of the copy table's.
bool LogUnlessOnline(const basis::Target& target, const QString& statement, const QString& copyTable,
                     const QString& serverTable) {
  if (!global.online) return CarryOutAndLog(target, statement, QString(statement).replace(copyTable, serverTable));
  CarryOut(statement, target.databasePath);
  return true;
}

bool WriteItems(const basis::Target& target, const QString& statement) {
  return LogUnlessOnline(target, statement, u"tblCopie_Items"_s, u"tblItems"_s);
}

bool WriteItemSpots(const basis::Target& target, const QString& statement) {
  return LogUnlessOnline(target, statement, u"tblCopie_ItemSpots"_s, u"tblItemSpots"_s);
}

bool WriteItemPingles(const basis::Target& target, const QString& statement) {
  return LogUnlessOnline(target, statement, u"tblCopie_ItemPingles"_s, u"tblItemPingles"_s);
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
    return LogUnlessOnline(target, statements::InsertLink(row, table), u"tblCopie_ItemsItemSpots"_s,
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
      return CarryOutAndLog({databasePath, table, keyField, id, {}}, statement, DeleteForLog(statement));
    }
    CarryOut(statement, databasePath);
    return true;
  });
}

bool WasCarriedOut() {
  return lastWrite.isCarriedOut;
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
    ExecuteOnce(statements::InsertLog(id, statement), global.localDatabasePath);
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
