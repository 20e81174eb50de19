// SPDX-License-Identifier: MIT
#pragma once

#include "data/ExportBasis.h"
#include "export/SameNumbers.h"
#include "platform/runtime/StagedFile.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <optional>

class ExportContent;

// Writes the basis of one export (data/ExportBasis.h) into the export folder. The basis gets its name before the export
// does, so that an export in the folder always has its basis. Paths are path texts; every failure is a runtime::Error.
class ExportBasisFile {
 public:
  // `content`: that of the export, complete. `header` without an export number.
  ExportBasisFile(const QString& localDatabasePath, const ExportContent& content, basis::Header header);

  // Writes and syncs the basis of this export under a temporary name in the same folder; one that is there already
  // serves another name too.
  void Stage(const QString& exportPath);
  const QString& TemporaryPath() const { return temporaryPath_; }
  const QByteArray& Digest() const { return digest_; }  // BLAKE2b-256 in hexadecimal

  // Of the staged basis.
  QStringList RecordsWithSameNumber() const { return sameNumbers_.Found(); }

  // As StagedFile::Place and PlaceNew. A basis that is placed is written again for the next name.
  void Replace(const QString& exportPath);
  [[nodiscard]] bool PlaceNew(const QString& exportPath);
  // Removes the placed basis of an export that got no name. A failure leaves a basis without an export.
  void TakeBack() const;
  void Keep();

 private:
  bool Placed(const QString& exportPath, const std::function<bool()>& place);

  QString localDatabasePath_;
  qint32 highestID_;
  qsizetype statementCount_;
  basis::Header header_;
  std::optional<runtime::StagedFile> file_;
  QString temporaryPath_;
  QByteArray digest_;
  QString placed_;
  SameNumbers sameNumbers_;
};
