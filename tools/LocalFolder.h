#pragma once
#include "data/ProgramLock.h"

#include <QString>

#include <memory>

// The folder in which a database stands, as far as commands must take the program into account that may work there.
class LocalFolder {
 public:
  // Absolute host path of a database.
  explicit LocalFolder(const QString& databasePath);

  // Keeps the program out of the folder of a local database, the one kind that has an offline log; nothing for any
  // other database. An Error while the program runs there.
  std::unique_ptr<ProgramLock> Lock() const;

  // A dated copy of the database, unless the settings of its program folder turn copies off. An Error when it cannot be
  // written.
  void BackUp(const QString& password = {}) const;

 private:
  bool IsLocal() const;

  QString databasePath_;
  QString folder_;
};
