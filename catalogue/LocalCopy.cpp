#include "catalogue/LocalCopy.h"

#include "data/Globals.h"
#include "data/Messages.h"
#include "data/Schema.h"
#include "data/Writes.h"
#include "platform/dao/Database.h"
#include "platform/desktop/Events.h"
#include "platform/desktop/Trapped.h"
#include "platform/desktop/WaitPointer.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Probe.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int kQuestion = 36;  // Yes and No, Yes is the default

// Copies all rows of a table into the table of the same name of another database; how many.
int CopyRows(const QString& table, const QString& fromPath, const QString& toPath) {
  dao::Database from = dao::OpenDatabase(fromPath);
  return from.Execute(u"INSERT INTO "_s + table + u" IN \"" + toPath + u"\" SELECT * FROM " + table);
}

// Keeps the rows of a copy table in the work database; how many. Without a work database there is no such safety net:
// 0, and the refresh goes its usual way.
int KeepRows(const QString& table) {
  try {
    if (runtime::Probe(global.workDatabasePath) == runtime::Presence::NotThere) {
      schema::CreateWorkDatabase(global.workDatabasePath);
    }
    dao::Database work = dao::OpenDatabase(global.workDatabasePath);
    if (work.TableNames().contains(table, Qt::CaseInsensitive)) {
      work.Execute(u"DELETE FROM "_s + table);
    } else {
      work.CreateTable(dao::OpenDatabase(global.localDatabasePath).Table(table));
    }
    return CopyRows(table, global.localDatabasePath, global.workDatabasePath);
  } catch (const runtime::Error&) {
    return 0;
  }
}

void OfferRowsBack(const QString& table, int rows) {
  desktop::Trapped("RefreshLocalCopy", [&] {
    const QString question =
        u"De lokale kopie kon niet vernieuwd worden en is nu leeg.\n\n"
        u"Wilt u de %1 records terugzetten die er net nog in stonden?"_s.arg(rows);
    if (ShowItemsMessage(question, kQuestion) == kAnswerYes) {
      const desktop::WaitPointer wait;
      CopyRows(table, global.workDatabasePath, global.localDatabasePath);
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
  if (emptied && !global.lastResult && kept > 0) OfferRowsBack(copyTable, kept);
}
