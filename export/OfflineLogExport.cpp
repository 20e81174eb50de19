// SPDX-License-Identifier: MIT
#include "export/OfflineLogExport.h"

#include "data/KeptStatements.h"
#include "export/ExportRecord.h"
#include "platform/dao/Database.h"
#include "platform/dao/FrozenDatabase.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Probe.h"
#include "platform/runtime/StagedFile.h"
#include "platform/runtime/TextFile.h"

#include <QHash>

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

// Statements that were executed but could not be logged belong to this export. If they still cannot be logged the
// export continues: emptying the log may make room.
void TryLogKeptStatements() {
  try {
    LogKeptStatements();
  } catch (const runtime::Error&) {
    // The caller tries again after emptying the log, and reports the error then.
  }
}

QString PathOf(const QString& folder, const QDateTime& second) {
  return folder + u'\\' + ExportContent::FileName(second);
}

// The record of this process's last export from each local database; kept after the export is settled.
QHash<QString, ExportRecord>& LastExports() {
  static QHash<QString, ExportRecord> records;
  return records;
}

// After a failure: the file was not renamed, or the record may or may not be written. The record is removed first: a
// record without its temporary file would mean that the file was renamed.
void Undo(const QString& localDatabasePath, runtime::StagedFile& file) {
  try {
    if (runtime::Probe(file.TemporaryPath()) == runtime::Presence::There) return RemoveExportRecord(localDatabasePath);
  } catch (const runtime::Error&) {
    // The next export settles what is left; the user sees the first error.
  }
  file.Keep();
}

// Do not export a log that cannot be emptied afterwards.
void RequireWritable(const QString& databasePath) {
  const dao::FrozenDatabase held(databasePath);
}

}  // namespace

QString OfflineLogExport::WriteFile(const QString& folder, SameSecond sameSecond) {
  TryLogKeptStatements();
  if (IsLogEmpty(localDatabasePath_)) return {};
  RequireWritable(localDatabasePath_);
  QDateTime second = runtime::Now();
  while (runtime::Probe(PathOf(folder, second)) == runtime::Presence::There && !MayReplace(folder, second, sameSecond))
    second = second.addSecs(1);
  runtime::StagedFile file(PathOf(folder, second));
  ExportContent content([&](const QByteArray& block) { file.Write(block); });
  content.AddLog(localDatabasePath_);
  const QByteArray digest = content.Finish();
  altered_ = content.Altered();
  highestID_ = content.HighestID();
  file.Complete();
  file.SyncName();
  try {
    return PlaceFile(file, folder, second, digest, sameSecond);
  } catch (const runtime::Error&) {
    Undo(localDatabasePath_, file);
    throw;
  }
}

// Each attempt first records the file name it tries. The name was free when checked, but another program may use it in
// the meantime.
QString OfflineLogExport::PlaceFile(runtime::StagedFile& file, const QString& folder, QDateTime second,
                                    const QByteArray& digest, SameSecond sameSecond) const {
  const bool replaces = MayReplace(folder, second, sameSecond);
  for (;; second = second.addSecs(1)) {
    const ExportRecord record{PathOf(folder, second), file.TemporaryPath(), highestID_, digest};
    WriteExportRecord(localDatabasePath_, record);
    if (replaces) {
      file.Place();
    } else if (!file.PlaceNew(record.path)) {
      continue;
    }
    LastExports()[localDatabasePath_] = record;
    return record.path;
  }
}

// Only a file that this process exported from this database and that is unchanged since.
bool OfflineLogExport::MayReplace(const QString& folder, const QDateTime& second, SameSecond sameSecond) const {
  const ExportRecord last = LastExports().value(localDatabasePath_);
  if (sameSecond == SameSecond::KeepAll || last.path != PathOf(folder, second)) return false;
  try {
    return ContentDigest::Of(runtime::ReadFile(last.path)) == last.digest;
  } catch (const runtime::Error&) {
    return false;
  }
}

void OfflineLogExport::EmptyLog() const {
  EmptyLogUpTo(localDatabasePath_, highestID_);
}

void EmptyLogUpTo(const QString& localDatabasePath, qint32 highestID) {
  dao::Database database = dao::OpenDatabase(localDatabasePath);
  database.Execute(u"DELETE FROM tblOfflineLog WHERE ID <= "_s + QString::number(highestID) + u" OR ID IS NULL"_s);
  RemoveExportRecord(localDatabasePath);
}
