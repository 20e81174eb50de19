// SPDX-License-Identifier: MIT
#pragma once

#include "data/ProgramLock.h"
#include "platform/dao/Database.h"
#include "tools/Arguments.h"

#include <QString>

#include <memory>

inline const QString kWithoutBackup = QStringLiteral("--zonder-reservekopie");

// Whether the name means the offline log of the database, or the table of its basis, compared as the database compares
// names. Throws runtime::Error for a table that it does not have.
bool IsOfflineLog(const dao::Database& database, const QString& table);

// The folder of a database, as far as commands must consider a planner that may be running there.
class LocalFolder {
 public:
  // Host path of a database; for a link, the folder is that of the real file.
  explicit LocalFolder(const QString& databasePath);

  // Locks the planner out of the folder of a local database, the only kind with an offline log; null for any other
  // database. Throws Error while the planner is running there.
  std::unique_ptr<ProgramLock> Lock() const;

  // A dated copy of the database before it is changed, unless the settings of its program folder turn copies off or the
  // user declines one (kWithoutBackup). When the copy cannot be made, throws an Error that mentions that option.
  // Deletes expired copies, except `keep`: the path of one that the command reads afterwards.
  void BackUp(const Arguments& arguments, const QString& keep = {}) const;

  // Whether it is a local database.
  bool IsLocal() const;

 private:
  QString databasePath_;  // absolute
  QString folder_;
};
