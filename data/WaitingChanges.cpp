// SPDX-License-Identifier: MIT
#include "data/WaitingChanges.h"

#include "data/Globals.h"
#include "data/LogQueue.h"
#include "platform/dao/Database.h"
#include "platform/runtime/Numbers.h"

#include <algorithm>
#include <string_view>

using namespace Qt::StringLiterals;

namespace {

// Compares bytes, which QStringView::startsWith does not: an export counts up to a million statements.
bool Begins(QStringView sqlSyntax, std::u16string_view text) {
  return sqlSyntax.size() >= static_cast<qsizetype>(text.size()) &&
         std::equal(text.begin(), text.end(), sqlSyntax.utf16());
}

}  // namespace

bool IsListStatement(QStringView sqlSyntax) {
  return Begins(sqlSyntax, u"INSERT INTO tblItemsItemSpots ") ||
         Begins(sqlSyntax, u"DELETE FROM tblCopie_ItemsItemSpots ");
}

void ChangeCounter::Add(QStringView sqlSyntax) {
  if (IsListStatement(sqlSyntax)) {
    if (listMayFollow_) return;
    itemMayFollow_ = true;
    listMayFollow_ = true;
  } else {
    const bool isOfCountedList = itemMayFollow_ && Begins(sqlSyntax, u"DELETE FROM tblCopie_Items ");
    itemMayFollow_ = false;
    listMayFollow_ = Begins(sqlSyntax, u"INSERT INTO tblItems ") || Begins(sqlSyntax, u"UPDATE tblItems ");
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
