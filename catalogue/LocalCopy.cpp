// SPDX-License-Identifier: MIT
#include "catalogue/LocalCopy.h"

#include "data/Backup.h"
#include "data/Globals.h"
#include "data/Messages.h"
#include "data/Writes.h"
#include "platform/dao/Database.h"
#include "platform/dao/RestoreTables.h"
#include "platform/desktop/WaitPointer.h"
#include "platform/desktop/Windows.h"
#include "platform/runtime/Trapped.h"

using namespace Qt::StringLiterals;

namespace {

int RowCount(const QString& databasePath, const QString& table) {
  const dao::Recordset rows =
      dao::OpenDatabase(databasePath, {.readOnly = true}).OpenRecordset(u"SELECT COUNT(*) AS Aantal FROM "_s + table);
  return rows.Field(u"Aantal"_s).toInt();
}

void OfferRestore(const QString& table, const QString& backup) {
  runtime::Trapped("RefreshLocalCopies", [&] {
    const int rows = RowCount(backup, table);
    if (rows == 0) return;
    const QString question =
        u"De lokale kopie kon niet vernieuwd worden en is nu leeg.\n\n"
        u"Wilt u de %1 records terugzetten die er net nog in stonden?"_s.arg(rows);
    if (ShowItemsMessage(question, kStyleYesNo) != kAnswerYes) return;
    const desktop::WaitPointer wait;
    dao::RestoreTables(backup, global.localDatabasePath, {{table, table}});
  });
}

void Refresh(const CopyTable& table, const QString& backup) {
  desktop::RepaintWindows();
  const bool emptied = DeleteAllInTable(table.name, global.localDatabasePath);
  global.lastResult = emptied;
  desktop::RepaintWindows();
  global.lastResult = table.fill(global.serverDatabasePath, global.localDatabasePath);
  if (emptied && !global.lastResult && !backup.isEmpty()) OfferRestore(table.name, backup);
}

}  // namespace

void RefreshLocalCopies(const QList<CopyTable>& tables) {
  const desktop::WaitPointer wait;
  const BackupBefore backup = BackUpBefore(global.localDatabasePath);
  if (!backup.proceed) {
    global.lastResult = false;
    return;
  }
  for (const CopyTable& table : tables)
    Refresh(table, backup.path);
}
