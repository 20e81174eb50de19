// SPDX-License-Identifier: MIT
#include "data/WaitingChanges.h"

#include "data/Globals.h"
#include "data/LogQueue.h"
#include "platform/dao/Database.h"

using namespace Qt::StringLiterals;

bool IsListStatement(QStringView sqlSyntax) {
  return sqlSyntax.startsWith(u"INSERT INTO tblItemsItemSpots ") ||
         sqlSyntax.startsWith(u"DELETE FROM tblCopie_ItemsItemSpots ");
}

WaitingChanges CountWaitingChanges() {
  WaitingChanges waiting;
  dao::OpenDatabase(global.localDatabasePath)
      .Visit(u"SELECT tblOfflineLog.SqlSyntax FROM tblOfflineLog"_s, [&](const dao::Row& row) {
        ++waiting.statements;
        if (!IsListStatement(row.Text(0))) ++waiting.changes;
        return true;
      });
  const int queued = QueuedStatementCount();
  waiting.statements += queued;
  waiting.changes += queued;
  return waiting;
}
