// SPDX-License-Identifier: MIT
#include "data/Writes.h"

#include "data/Globals.h"
#include "data/KeptStatements.h"
#include "data/Lookups.h"
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

// Executes the statement of a write procedure that logs.
void CarryOut(const QString& statement, const QString& databasePath) {
  ExecuteOnce(statement, databasePath);
  lastWrite.isCarriedOut = true;
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

// Appends a statement to the offline log. Returns false after a failure, which has been shown; the statement is kept.
bool AppendToLog(const QString& statement) {
  std::optional<qint32> id;
  if (LogKept()) id = GetNewIDIfAny(u"tblOfflineLog"_s, u"ID"_s, global.localDatabasePath);
  if (id && Insert_tblOfflineLog(*id, statement)) return true;
  lastWrite.waitsForLog = true;
  KeepStatement(statement, id);
  return false;
}

bool LogUnlessOnline(QString statement, const QString& copyTable, const QString& serverTable) {
  if (global.online) return true;
  return AppendToLog(statement.replace(copyTable, serverTable));
}

bool WriteItems(const QString& statement, const QString& databasePath) {
  CarryOut(statement, databasePath);
  return LogUnlessOnline(statement, u"tblCopie_Items"_s, u"tblItems"_s);
}

bool WriteItemSpots(const QString& statement, const QString& databasePath) {
  CarryOut(statement, databasePath);
  return LogUnlessOnline(statement, u"tblCopie_ItemSpots"_s, u"tblItemSpots"_s);
}

bool WriteItemPingles(const QString& statement, const QString& databasePath) {
  CarryOut(statement, databasePath);
  return LogUnlessOnline(statement, u"tblCopie_ItemPingles"_s, u"tblItemPingles"_s);
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
  return Write(__func__, [&] { return WriteItems(statements::InsertItem(row, table), databasePath); });
}

bool Update_tblItems(const ItemRow& row, const QString& databasePath, const QString& table) {
  return Write(__func__, [&] { return WriteItems(statements::UpdateItem(row, table), databasePath); });
}

bool Update_tblItems_Aktief(qint32 id, qint32 aktief, const QString& databasePath, const QString& table) {
  return Write(__func__, [&] { return WriteItems(statements::SetAktief(id, aktief, table), databasePath); });
}

bool Insert_tblItemsItemSpots(const ItemsItemSpotsRow& row, const QString& databasePath, const QString& table) {
  return Write(__func__, [&] {
    const QString statement = statements::InsertLink(row, table);
    CarryOut(statement, databasePath);
    return LogUnlessOnline(statement, u"tblCopie_ItemsItemSpots"_s, u"tblItemsItemSpots"_s);
  });
}

bool Insert_tblItemSpots(const ItemSpotRow& row, const QString& databasePath, const QString& table) {
  return Write(__func__, [&] { return WriteItemSpots(statements::InsertItemSpot(row, table), databasePath); });
}

bool Update_tblItemSpots(const ItemSpotRow& row, const QString& databasePath, const QString& table) {
  return Write(__func__, [&] { return WriteItemSpots(statements::UpdateItemSpot(row, table), databasePath); });
}

bool Update_tblItemSpots_Aktief(qint32 id, qint32 aktief, const QString& databasePath, const QString& table) {
  return Write(__func__, [&] { return WriteItemSpots(statements::SetAktief(id, aktief, table), databasePath); });
}

bool Reset_tblItemSpots_AantalGedraaid(qint32 id, const QString& databasePath, const QString& table) {
  lastWrite = {};
  try {
    return WriteItemSpots(statements::ResetAantalGedraaid(id, table), databasePath);
  } catch (...) {
    return false;  // silent, because it is called for every spot of an item
  }
}

bool Insert_tblItemPingles(const ItemPingleRow& row, const QString& databasePath, const QString& table) {
  return Write(__func__, [&] { return WriteItemPingles(statements::InsertItemPingle(row, table), databasePath); });
}

bool Update_tblItemPingles(const ItemPingleRow& row, const QString& databasePath, const QString& table) {
  return Write(__func__, [&] { return WriteItemPingles(statements::UpdateItemPingle(row, table), databasePath); });
}

bool Delete_tblBeheer(qint32 id, const QString& table, const QString& keyField, const QString& databasePath) {
  return Write(__func__, [&] {
    const QString statement = statements::Delete(id, table, keyField);
    CarryOut(statement, databasePath);
    if (global.online || !IsLoggedDelete(table)) return true;
    return AppendToLog(DeleteForLog(statement));
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
