#include "export/OfflineLogExport.h"

#include "data/ExportRecord.h"
#include "platform/dao/Database.h"
#include "platform/dao/FrozenDatabase.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Probe.h"
#include "platform/runtime/StagedFile.h"

using namespace Qt::StringLiterals;

namespace {

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

OfflineLogExport::OfflineLogExport(const QString& localDatabasePath)
    : localDatabasePath_(localDatabasePath), content_(ExportContent::OfLog(localDatabasePath)) {}

QString OfflineLogExport::WriteFile(const QString& folder) {
  if (content_.RowCount() == 0) return {};
  RequireWritable(localDatabasePath_);
  QString path = folder + u'\\' + ExportContent::FileName(runtime::Now());
  runtime::StagedFile file(path, content_.Bytes());
  file.SyncName();
  try {
    WriteExportRecord(localDatabasePath_, {path, file.TemporaryPath(), content_.HighestID(), content_.Digest()});
    file.Place();
  } catch (const runtime::Error&) {
    TakeBack(localDatabasePath_, file);
    throw;
  }
  return path;
}

void OfflineLogExport::EmptyLog() const {
  EmptyLogUpTo(localDatabasePath_, content_.HighestID());
}

void EmptyLogUpTo(const QString& localDatabasePath, qint32 highestID) {
  dao::Database database = dao::OpenDatabase(localDatabasePath);
  database.Execute(u"DELETE FROM tblOfflineLog WHERE ID <= "_s + QString::number(highestID) + u" OR ID IS NULL"_s);
  RemoveExportRecord(localDatabasePath);
}
