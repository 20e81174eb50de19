// SPDX-License-Identifier: MIT
#include "data/WaitingChanges.h"

#include "data/Globals.h"
#include "data/LogQueue.h"
#include "platform/dao/Database.h"
#include "platform/runtime/Numbers.h"

using namespace Qt::StringLiterals;

bool IsListStatement(QStringView sqlSyntax) {
  return sqlSyntax.startsWith(u"INSERT INTO tblItemsItemSpots ") ||
         sqlSyntax.startsWith(u"DELETE FROM tblCopie_ItemsItemSpots ");
}

void ChangeCounter::Add(QStringView sqlSyntax) {
  if (IsListStatement(sqlSyntax)) {
    if (listMayFollow_) return;
    itemMayFollow_ = true;
    listMayFollow_ = true;
  } else {
    const bool isOfCountedList = itemMayFollow_ && sqlSyntax.startsWith(u"DELETE FROM tblCopie_Items ");
    itemMayFollow_ = false;
    listMayFollow_ = sqlSyntax.startsWith(u"INSERT INTO tblItems ") || sqlSyntax.startsWith(u"UPDATE tblItems ");
    if (isOfCountedList) return;
  }
  ++count_;
}

int CountWaitingChanges() {
  ChangeCounter waiting;
  dao::OpenDatabase(global.localDatabasePath)
      .Visit(u"SELECT tblOfflineLog.SqlSyntax FROM tblOfflineLog"_s, [&](const dao::Row& row) {
        const QStringView statement = runtime::TrimBlanks(QStringView(row.Text(0)));
        if (!statement.isEmpty()) waiting.Add(statement);
        return true;
      });
  return waiting.Count() + QueuedStatementCount();
}
