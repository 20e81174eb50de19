#include "catalogue/LocalCopy.h"

#include "data/Globals.h"
#include "data/Messages.h"
#include "data/Writes.h"
#include "platform/dao/Database.h"
#include "platform/desktop/Events.h"
#include "platform/desktop/Trapped.h"
#include "platform/desktop/WaitPointer.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/HostPath.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace {

constexpr int kQuestion = 36;  // Yes and No, Yes is the default

// A copy of the local database file, beside it, for as long as a refresh lasts.
QString ReservePath() {
  return global.localDatabasePath + u".reserve"_s;
}

void DropReserve() {
  QFile::remove(runtime::HostPath(ReservePath()));
}

// Keeps the local database as it is now; how many rows of the table it holds. Where that is not possible there is no
// such safety net: 0, and the refresh goes its usual way. A reserve that was not used stays until there are rows again.
int KeepRows(const QString& table) {
  try {
    // Reading first: a change that was cut off earlier is mended by it, so that the file is whole.
    const dao::Recordset rows =
        dao::OpenDatabase(global.localDatabasePath).OpenRecordset(u"SELECT COUNT(*) AS Aantal FROM "_s + table);
    const int count = rows.Field(u"Aantal"_s).toInt();
    if (count == 0) return 0;
    DropReserve();
    return QFile::copy(runtime::HostPath(global.localDatabasePath), runtime::HostPath(ReservePath())) ? count : 0;
  } catch (const runtime::Error&) {
    return 0;
  }
}

// All rows of the table, from the reserve into the emptied table.
void PutRowsBack(const QString& table) {
  dao::Database reserve = dao::OpenDatabase(ReservePath());
  reserve.Execute(u"INSERT INTO "_s + table + u" IN \""_s + global.localDatabasePath + u"\" SELECT * FROM "_s + table);
}

void OfferRowsBack(const QString& table, int rows) {
  desktop::Trapped("RefreshLocalCopy", [&] {
    const QString question =
        u"De lokale kopie kon niet vernieuwd worden en is nu leeg.\n\n"
        u"Wilt u de %1 records terugzetten die er net nog in stonden?"_s.arg(rows);
    if (ShowItemsMessage(question, kQuestion) == kAnswerYes) {
      const desktop::WaitPointer wait;
      PutRowsBack(table);
      DropReserve();
    }
  });
}

}  // namespace

void RefreshLocalCopy(const QString& copyTable, CopyToLocal copy) {
  const desktop::WaitPointer wait;
  const int kept = KeepRows(copyTable);
  desktop::RepaintWindows();
  const bool emptied = DeleteAllInTable(copyTable, global.localDatabasePath);
  global.lastResult = emptied;
  desktop::RepaintWindows();
  global.lastResult = copy(global.serverDatabasePath, global.localDatabasePath);
  if (emptied && !global.lastResult && kept > 0) return OfferRowsBack(copyTable, kept);
  if (kept > 0) DropReserve();
}
