// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <optional>

// Dated copies of a database, "backup\OvalistoLocal-20240131-154507.mdb" beside it, made before an act that removes
// much at once. Path texts.

// Makes one as the database is now, unless the newest copy holds the very same, and lets the old ones go. Gives the
// path of the copy that holds the present state. Nothing when there is no such database, so that nothing can be lost.
// runtime::Error when the copy cannot be made, for whatever reason: then nothing must be removed either.
std::optional<QString> BackUp(const QString& databasePath, const QString& password = {});

// Whether this settings file leaves copies on: they are, unless [Backup] says Enabled=0.
bool BackupsWanted(const QString& settingsPath);

// A copy for an act of the program's user.
struct BackupBefore {
  bool proceed = true;  // false: the copy could not be written, and the user would rather leave things as they are
  QString path;         // of the copy; empty when there is none
};
// Makes a copy if the settings want it. When it cannot be written the user is told why and asked whether to go on.
BackupBefore BackUpBefore(const QString& databasePath);
