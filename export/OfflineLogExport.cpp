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

// What was carried out and not logged yet belongs to this export. A log that takes nothing is no reason not to export:
// emptying it may be what makes room.
void LogWhatWasKept() {
  try {
    LogKeptStatements();
  } catch (const runtime::Error&) {
    // The caller tries again when the log is empty, and tells then.
  }
}

QString PathOf(const QString& folder, const QDateTime& second) {
  return folder + u'\\' + ExportContent::FileName(second);
}

// The record of the last export from each local database in this process, also when it is settled.
QHash<QString, ExportRecord>& LastExports() {
  static QHash<QString, ExportRecord> records;
  return records;
}

// The file did not get its name, or its record may be there or not. The record goes first: one that has lost its
// temporary file would mean that it did.
void Undo(const QString& localDatabasePath, runtime::StagedFile& file) {
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

QString OfflineLogExport::WriteFile(const QString& folder, SameSecond sameSecond) {
  LogWhatWasKept();
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
    return Place(file, folder, second, digest, sameSecond);
  } catch (const runtime::Error&) {
    Undo(localDatabasePath_, file);
    throw;
  }
}

// Before each try the record names the file that may be there afterwards. The names looked free, but another program
// may take them at any moment.
QString OfflineLogExport::Place(runtime::StagedFile& file, const QString& folder, QDateTime second,
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

// Only a file that this process exported from this database and that is as it was written.
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
