// SPDX-License-Identifier: MIT
#include "app/StationStatus.h"

#include "data/Globals.h"
#include "data/WaitingChanges.h"
#include "platform/dao/Database.h"
#include "platform/runtime/Error.h"

using namespace Qt::StringLiterals;

namespace {

bool IsEmpty(dao::Database& database, const QString& table) {
  return database.OpenRecordset(u"SELECT MAX(ID) AS LaatsteID FROM "_s + table).Field(u"LaatsteID"_s).isNull();
}

}  // namespace

StationStatus ReadStationStatus() {
  StationStatus status;
  try {
    dao::Database database = dao::OpenDatabase(global.localDatabasePath);
    // A station without items has an empty copy of these for as long as it has none.
    status.copyEmpty = IsEmpty(database, u"tblCopie_ItemSpots"_s) && IsEmpty(database, u"tblCopie_Items"_s);
    status.notExported = CountWaitingChanges();
  } catch (const runtime::Error& error) {
    status = StationStatus();
    status.unreadable = ReasonFor(global.localDatabasePath, u"de lokale database"_s, error.Description());
  }
  return status;
}
