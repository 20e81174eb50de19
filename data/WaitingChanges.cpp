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

int CountWaitingChanges() {
  int waiting = 0;
  dao::OpenDatabase(global.localDatabasePath)
      .Visit(u"SELECT tblOfflineLog.SqlSyntax FROM tblOfflineLog"_s, [&](const dao::Row& row) {
        const QStringView statement = runtime::TrimBlanks(QStringView(row.Text(0)));
        if (!statement.isEmpty() && !IsListStatement(statement)) ++waiting;
        return true;
      });
  return waiting + QueuedStatementCount();
}
