// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

// What an export leaves beside the local database from the moment its file is complete under a temporary name until the
// log is emptied. After a crash it tells which of the two still has to happen. Paths are path texts.
struct ExportRecord {
  QString path;          // the file's final name
  QString temporary;     // where it stands until it is renamed
  qint32 highestID = 0;  // of the log rows in it
  QByteArray digest;     // BLAKE2b-256 of its content, in hexadecimal

  bool operator==(const ExportRecord&) const = default;
};

// Where the record of a local database stands: the database's path with "-export" behind it.
QString ExportRecordPath(const QString& localDatabasePath);

// Nothing when there is none. All throw runtime::Error.
std::optional<ExportRecord> ReadExportRecord(const QString& localDatabasePath);
// Removing one that is not there does nothing. Both return when what they did will survive a power cut.
void WriteExportRecord(const QString& localDatabasePath, const ExportRecord& record);
void RemoveExportRecord(const QString& localDatabasePath);
