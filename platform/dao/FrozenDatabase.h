// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <memory>

namespace jet {
class Database;
class WriteTurn;
}  // namespace jet

namespace dao {

// A database file that nobody changes while this lives: it has the one writer's turn. For copying the file whole, as it
// is after its last change. Path texts; every failure is a runtime::Error.
class FrozenDatabase {
 public:
  // Waits for its turn as a writing statement does; the errors are those of OpenDatabase and of a statement that
  // cannot write.
  explicit FrozenDatabase(const QString& pathText, const QString& password = {});
  ~FrozenDatabase();
  FrozenDatabase(const FrozenDatabase&) = delete;
  FrozenDatabase& operator=(const FrozenDatabase&) = delete;

  // Whether the other file has the very same bytes.
  bool IsSameAs(const QString& otherPathText) const;
  // Makes a folder for copies, which the users of the database may use as they may use the database. One that is there
  // is left as it is.
  void MakeFolder(const QString& folderPathText) const;
  // Makes a new file, whole or not at all; an earlier one of that name is replaced. It has the permissions, group and
  // owner of the database, as far as this user may set them, and is never open to more users.
  void CopyTo(const QString& targetPathText) const;

 private:
  QString pathText_;
  std::shared_ptr<jet::Database> database_;  // goes after its turn
  std::unique_ptr<jet::WriteTurn> turn_;
};

}  // namespace dao
