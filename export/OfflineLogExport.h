// SPDX-License-Identifier: MIT
#pragma once

#include "export/ExportContent.h"

#include <QString>

#include <limits>

namespace runtime {
class StagedFile;
}
class ExportBasisFile;

// One export of the offline log. A crash at any point neither loses a statement nor exports it twice: the file and its
// basis (data/ExportBasis.h) are written and synced under temporary names, then a record next to the database; then the
// basis is renamed and after it the file, its statements are deleted from the log, and the record is removed. From a
// leftover record InterruptedExport.h derives how far the export came. Every failure is a runtime::Error.
//
// Used by the planning export and by spotrooster-db. The caller holds the program lock (data/ProgramLock.h), settles an
// interrupted export before, and calls LogQueuedStatements (data/LogQueue.h) afterwards.
class OfflineLogExport {
 public:
  explicit OfflineLogExport(const QString& localDatabasePath) : localDatabasePath_(localDatabasePath) {}

  // Whether a file of the same second is replaced. Files of another program or program folder never are.
  enum class SameSecond { ReplaceOwn, KeepAll };

  // Writes the log to a file in the folder (path text), named after the current second, and returns its path. When that
  // name exists the next free second is used; with ReplaceOwn a file that this process exported from this database, and
  // that is unchanged, is replaced. The file always has a basis: for statements whose rows were not kept it says so. An
  // empty log makes no file and returns an empty path. After an error there is no file, or (when only the last sync
  // failed) both file and record exist and are settled before the next export.
  QString WriteFile(const QString& folder, SameSecond sameSecond = SameSecond::KeepAll);
  int ChangeCount() const { return changeCount_; }  // in the file, as users count them
  // Statements that differ between file and log.
  const AlteredStatements& Altered() const { return altered_; }
  // New records in the file that have the same number (export/SameNumbers.h).
  const QStringList& RecordsWithSameNumber() const { return sameNumber_; }
  // Deletes the exported statements from the log, then the record.
  void EmptyLog() const;

 private:
  QString PlaceFile(runtime::StagedFile& file, ExportBasisFile& basisFile, const QString& folder, QDateTime second,
                    const QByteArray& digest, SameSecond sameSecond) const;
  bool MayReplace(const QString& folder, const QDateTime& second, SameSecond sameSecond) const;

  QString localDatabasePath_;
  int changeCount_ = 0;
  AlteredStatements altered_;
  QStringList sameNumber_;
  qint32 highestID_ = std::numeric_limits<qint32>::min();
};

// Deletes every row up to this ID from the log, with its basis, then the export's record if there is one.
void EmptyLogUpTo(const QString& localDatabasePath, qint32 highestID);
