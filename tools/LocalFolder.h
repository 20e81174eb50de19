// SPDX-License-Identifier: MIT
#pragma once

#include "data/ProgramLock.h"
#include "platform/dao/Database.h"
#include "tools/Arguments.h"

#include <QString>

#include <memory>

inline const QString kWithoutBackup = QStringLiteral("--zonder-reservekopie");

// Whether this name stands for the offline log of the database, as the database itself compares names. runtime::Error
// for a table that it does not have.
bool IsOfflineLog(const dao::Database& database, const QString& table);

// The folder in which a database stands, as far as commands must take the program into account that may work there.
class LocalFolder {
 public:
  // Host path of a database; where links lead to it, the folder is that of the file itself.
  explicit LocalFolder(const QString& databasePath);

  // Keeps the program out of the folder of a local database, the one kind that has an offline log; nothing for any
  // other database. An Error while the program runs there.
  std::unique_ptr<ProgramLock> Lock() const;

  // A dated copy of the database before it is changed, unless the settings of its program folder turn copies off or the
  // user does without (kWithoutBackup). An Error that names that option when it cannot be made.
  void BackUp(const Arguments& arguments) const;

  // Whether it is a local database.
  bool IsLocal() const;

 private:
  QString databasePath_;  // absolute
  QString folder_;
};
