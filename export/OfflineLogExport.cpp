#include "export/OfflineLogExport.h"

#include "data/KeptStatements.h"
#include "export/ExportRecord.h"
#include "platform/dao/Database.h"
#include "platform/dao/FrozenDatabase.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Probe.h"
#include "platform/runtime/StagedFile.h"

using namespace Qt::StringLiterals;

namespace {

bool IsLogEmpty(const QString& localDatabasePath) {
  bool isEmpty = true;
  dao::OpenDatabase(localDatabasePath).Visit(u"SELECT tblOfflineLog.ID FROM tblOfflineLog"_s, [&](const dao::Row&) {
    isEmpty = false;
    return false;
  });
  return isEmpty;
}

// What was carried out and not logged yet belongs to this export. A log that takes nothing is no reason not to export:
// emptying it may be what makes room.
void LogWhatWasKept() {
  try {
    LogKeptStatements();
  } catch (const runtime::Error&) {
    // The caller tries again when the log is empty, and tells then.
  }
}

// The file did not get its name, or its record may be there or not. The record goes first: one that has lost its
// temporary file would mean that it did.
void TakeBack(const QString& localDatabasePath, runtime::StagedFile& file) {
  try {
    if (runtime::Probe(file.TemporaryPath()) == runtime::Presence::There) return RemoveExportRecord(localDatabasePath);
  } catch (const runtime::Error&) {
    // What is left is settled before the next export; the user hears of what went wrong first.
  }
  file.Keep();
}

// A log that could not be emptied afterwards is not handed out.
void RequireWritable(const QString& databasePath) {
  const dao::FrozenDatabase held(databasePath);
}

}  // namespace

QString OfflineLogExport::WriteFile(const QString& folder) {
  LogWhatWasKept();
  if (IsLogEmpty(localDatabasePath_)) return {};
  RequireWritable(localDatabasePath_);
  QString path = folder + u'\\' + ExportContent::FileName(runtime::Now());
  runtime::StagedFile file(path);
  ExportContent content([&](const QByteArray& block) { file.Write(block); });
  content.AddLog(localDatabasePath_);
  const QByteArray digest = content.Finish();
  altered_ = content.Altered();
  highestID_ = content.HighestID();
  file.Complete();
  file.SyncName();
  try {
    WriteExportRecord(localDatabasePath_, {path, file.TemporaryPath(), highestID_, digest});
    file.Place();
  } catch (const runtime::Error&) {
    TakeBack(localDatabasePath_, file);
    throw;
  }
  return path;
}

void OfflineLogExport::EmptyLog() const {
  EmptyLogUpTo(localDatabasePath_, highestID_);
}

void EmptyLogUpTo(const QString& localDatabasePath, qint32 highestID) {
  dao::Database database = dao::OpenDatabase(localDatabasePath);
  database.Execute(u"DELETE FROM tblOfflineLog WHERE ID <= "_s + QString::number(highestID) + u" OR ID IS NULL"_s);
  RemoveExportRecord(localDatabasePath);
}
