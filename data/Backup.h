// SPDX-License-Identifier: MIT
#pragma once

#include "data/BackupRetention.h"

#include <QDateTime>
#include <QList>
#include <QString>

#include <optional>

// Dated copies of a database, made before an operation that deletes many rows and, of the server database, once a day,
// in the folder "backup" next to the database: "backup\OvalistoLocal-20240131-154507.mdb". All paths are path texts
// (drive letters and backslashes). A database on a server has none: its administrator makes them there.

// Copies the database unless the newest copy is identical, and deletes expired copies, except `keep`: the path of a
// copy that the caller is about to read. Returns the path of the copy with the current contents; nullopt when the
// database does not exist. Throws runtime::Error when no copy could be made; the caller must then delete nothing.
std::optional<QString> BackUp(const QString& databasePath, const QString& password = {}, const QString& keep = {});

// Makes a copy unless one was made today, by this program or another one. Does nothing when the database does not
// exist. Readers are not delayed; writers only while what was written during the copying is copied again. Throws
// runtime::Error when no copy could be made. May run in any thread.
void BackUpDaily(const QString& databasePath, const QDateTime& now);

// The copies of the database, the newest first; none when the folder does not exist or cannot be read.
QList<BackupFile> BackupsOf(const QString& databasePath);
QString BackupFolderOf(const QString& databasePath);

// False when this settings file has Enabled=0 in section [Backup]; true otherwise, also when it cannot be read.
bool BackupsEnabled(const QString& settingsPath);

// Result of BackUpBefore.
struct BackupBefore {
  bool proceed = true;  // false: the copy failed and the user chose not to continue
  QString path;         // of the copy; empty when there is none
};
// Makes a copy unless the settings file disables it or the database is on a server. When the copy fails, shows why and
// asks the user whether to continue without one.
BackupBefore BackUpBefore(const QString& databasePath);
