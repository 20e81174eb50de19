// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <optional>

// Dated copies of a database, made before an operation that deletes many rows, in the folder "backup" next to the
// database: "backup\OvalistoLocal-20240131-154507.mdb". All paths are path texts (drive letters and backslashes).

// Copies the database unless the newest copy is identical, and deletes expired copies. Returns the path of the copy
// with the current contents; nullopt when the database does not exist. Throws runtime::Error when no copy could be
// made; the caller must then delete nothing.
std::optional<QString> BackUp(const QString& databasePath, const QString& password = {});

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
