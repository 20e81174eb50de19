// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

// File next to the local database, from the moment the export file is complete under a temporary name until the log is
// emptied. After a crash it shows which of the two steps is still to be done. Paths are path texts.
struct ExportRecord {
  QString path;          // the file's final name
  QString temporary;     // its path until it is renamed
  qint32 highestID = 0;  // of the log rows in it
  QByteArray digest;     // BLAKE2b-256 of its content, in hexadecimal
  // Likewise of the basis beside it; both empty in the record of an earlier version of the program.
  QString basisTemporary;
  QByteArray basisDigest;

  bool operator==(const ExportRecord&) const = default;
};

// Path of a local database's record: the database's path followed by "-export".
QString ExportRecordPath(const QString& localDatabasePath);

// Empty when there is no record. All functions throw runtime::Error.
std::optional<ExportRecord> ReadExportRecord(const QString& localDatabasePath);
// Both return after the change is synced to disk. Removing a record that does not exist does nothing.
void WriteExportRecord(const QString& localDatabasePath, const ExportRecord& record);
void RemoveExportRecord(const QString& localDatabasePath);
