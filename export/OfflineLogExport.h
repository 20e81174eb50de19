// SPDX-License-Identifier: MIT
#pragma once

#include "export/ExportContent.h"

#include <QString>

#include <limits>

namespace runtime {
class StagedFile;
}

// One export of the offline log, in steps between which the program may die at any place without losing a statement or
// handing one out twice: the file is written and synced under a temporary name, a record of it beside the database;
// then the file gets its name, the log loses what the file holds, and the record goes. Whoever finds a record
// (InterruptedExport.h) can tell how far it came. Every failure is a runtime::Error.
//
// Used by the planning export and by spotrooster-db. The caller holds the program lock (data/ProgramLock.h), and has
// settled an interrupted export before; afterwards it logs what is kept (data/KeptStatements.h).
class OfflineLogExport {
 public:
  explicit OfflineLogExport(const QString& localDatabasePath) : localDatabasePath_(localDatabasePath) {}

  // What a file of the same second becomes. None of another program or program folder is ever replaced.
  enum class SameSecond { ReplaceOwn, KeepAll };

  // Writes the log into the file of the present moment in the folder (path text) and gives its path. Where that name is
  // taken the file gets the name of the next second that is free; ReplaceOwn: a file that this process exported from
  // this database, and that is as it was written, gives way. A log without a row makes no file: the path is empty.
  // After an error there is no file, or (when only the last sync failed) it is there and the record too, so that it is
  // settled before the next export.
  QString WriteFile(const QString& folder, SameSecond sameSecond = SameSecond::KeepAll);
  // The statements that the file does not hold as they were.
  const AlteredStatements& Altered() const { return altered_; }
  // Takes out of the log what the file holds, and then the record away.
  void EmptyLog() const;

 private:
  QString Place(runtime::StagedFile& file, const QString& folder, QDateTime second, const QByteArray& digest,
                SameSecond sameSecond) const;
  bool MayReplace(const QString& folder, const QDateTime& second, SameSecond sameSecond) const;

  QString localDatabasePath_;
  AlteredStatements altered_;
  qint32 highestID_ = std::numeric_limits<qint32>::min();
};

// Takes every row up to this ID out of the log, and then the export's record away when there is one.
void EmptyLogUpTo(const QString& localDatabasePath, qint32 highestID);
