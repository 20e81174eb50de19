// SPDX-License-Identifier: MIT
#include "export/OfflineLogExport.h"

#include "data/Globals.h"
#include "data/LogQueue.h"
#include "data/OfflineBasis.h"
#include "export/ExportBasisFile.h"
#include "export/ExportRecord.h"
#include "platform/dao/Database.h"
#include "platform/dao/FrozenDatabase.h"
#include "platform/dao/StatementTransaction.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/HostPath.h"
#include "platform/runtime/Probe.h"
#include "platform/runtime/StagedFile.h"
#include "platform/runtime/TextFile.h"

#include <QFileInfo>
#include <QHash>
#include <QSysInfo>

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
void TryLogQueuedStatements() {
  try {
    QueueUnloggedStatements();
    LogQueuedStatements();
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
void Undo(const QString& localDatabasePath, runtime::StagedFile& file, ExportBasisFile& basisFile) {
  try {
    if (runtime::Probe(file.TemporaryPath()) == runtime::Presence::There) {
      basisFile.TakeBack();
      return RemoveExportRecord(localDatabasePath);
    }
  } catch (const runtime::Error&) {
    // The next export settles what is left; the user sees the first error.
  }
  file.Keep();
  basisFile.Keep();
}

bool IsTaken(const QString& path) {
  return runtime::Probe(path) == runtime::Presence::There ||
         runtime::Probe(basis::PathOf(path)) == runtime::Presence::There;
}

// This program folder on this computer, by its real path: every user's may be the same drive. At most as long as the
// ledger of processed exports takes.
QString SourceName() {
  constexpr qsizetype kLongest = 100;
  constexpr qsizetype kDigits = 16;
  const QString host = runtime::HostPath(global.programFolder);
  const QString real = QFileInfo(host).canonicalFilePath();
  QString source = QSysInfo::machineHostName() + u' ' + (real.isEmpty() ? host : real);
  if (source.size() <= kLongest) return source;
  return source.left(kLongest - kDigits - 1) + u' ' +
         QString::fromLatin1(ContentDigest::Of(source.toUtf8()).first(kDigits));
}

// What the basis says of its export, but for its number.
basis::Header HeaderOf(const ExportContent& content, const QByteArray& digest) {
  return {{}, digest, content.ByteCount(), SourceName()};
}

// Do not export a log that cannot be emptied afterwards.
void RequireWritable(const QString& databasePath) {
  const dao::FrozenDatabase held(databasePath);
}

}  // namespace

QString OfflineLogExport::WriteFile(const QString& folder, SameSecond sameSecond) {
  TryLogQueuedStatements();
  if (IsLogEmpty(localDatabasePath_)) return {};
  RequireWritable(localDatabasePath_);
  QDateTime second = runtime::Now();
  while (IsTaken(PathOf(folder, second)) && !MayReplace(folder, second, sameSecond))
    second = second.addSecs(1);
  runtime::StagedFile file(PathOf(folder, second), localDatabasePath_);
  ExportContent content([&](const QByteArray& block) { file.Write(block); });
  content.AddLog(localDatabasePath_);
  const QByteArray digest = content.Finish();
  changeCount_ = content.ChangeCount();
  altered_ = content.Altered();
  highestID_ = content.HighestID();
  file.Complete();
  file.SyncName();
  ExportBasisFile basisFile(localDatabasePath_, content, HeaderOf(content, digest));
  try {
    QString path = PlaceFile(file, basisFile, folder, second, digest, sameSecond);
    sameNumber_ = basisFile.RecordsWithSameNumber();
    return path;
  } catch (const runtime::Error&) {
    Undo(localDatabasePath_, file, basisFile);
    throw;
  }
}

// Each attempt first records the file names it tries. They were free when checked, but another program may use them in
// the meantime.
QString OfflineLogExport::PlaceFile(runtime::StagedFile& file, ExportBasisFile& basisFile, const QString& folder,
                                    QDateTime second, const QByteArray& digest, SameSecond sameSecond) const {
  const bool replaces = MayReplace(folder, second, sameSecond);
  for (;; second = second.addSecs(1)) {
    QString path = PathOf(folder, second);
    basisFile.Stage(path);
    const ExportRecord record{path,   file.TemporaryPath(),      highestID_,
                              digest, basisFile.TemporaryPath(), basisFile.Digest()};
    WriteExportRecord(localDatabasePath_, record);
    if (replaces) {
      basisFile.Replace(path);
      file.Place();
    } else {
      if (!basisFile.PlaceNew(path)) continue;
      if (!file.PlaceNew(path)) {
        basisFile.TakeBack();
        continue;
      }
    }
    LastExports()[localDatabasePath_] = record;
    return path;
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
  const QString last = QString::number(highestID);
  dao::Database database = dao::OpenDatabase(localDatabasePath);
  {
    dao::StatementTransaction transaction(database);
    transaction.Execute(u"DELETE FROM tblOfflineLog WHERE ID <= "_s + last + u" OR ID IS NULL"_s);
    if (transaction.HasTable(basis::OfflineTableName()))
      transaction.Execute(u"DELETE FROM "_s + basis::OfflineTableName() + u" WHERE LogID <= "_s + last);
    transaction.Commit();
  }
  RemoveExportRecord(localDatabasePath);
}
