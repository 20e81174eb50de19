// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <functional>
#include <memory>

namespace files {
class AtomicFile;
}
namespace jet {
class Database;
class WriteTurn;
}  // namespace jet

namespace dao {

// Holds the write lock of a database file, so that its bytes do not change: for copying the complete file. Paths are
// path texts; every failure is a runtime::Error.
class FrozenDatabase {
 public:
  // Waits for the write lock as a writing statement does; the errors are those of OpenDatabase and of a statement that
  // cannot write.
  explicit FrozenDatabase(const QString& pathText, const QString& password = {});
  ~FrozenDatabase();
  FrozenDatabase(const FrozenDatabase&) = delete;
  FrozenDatabase& operator=(const FrozenDatabase&) = delete;

  // Releases the write lock while `work` runs and then takes it again. True when no program wrote to the file in
  // between: then what `work` read belongs together.
  [[nodiscard]] bool UnchangedDuring(const std::function<void()>& work);

  // Whether the other file has the same bytes.
  bool IsSameAs(const QString& otherPathText) const;
  // Creates a folder for copies with access for the users of the database (see files::MakeFolder). An existing folder
  // is left as it is.
  void MakeFolder(const QString& folderPathText) const;
  // Copies the file atomically; an earlier file of that name is replaced. The copy gets the permissions, group and
  // owner of the database as far as this user may set them, and is never accessible to more users.
  void CopyTo(const QString& targetPathText) const;
  // CopyTo in two steps: the copy is written, durable, under a temporary name, and then put in its place.
  std::unique_ptr<files::AtomicFile> Prepare(const QString& targetPathText) const;
  // Makes a prepared copy equal to the file: writes again what others have changed since.
  void Refresh(files::AtomicFile& prepared, const QString& targetPathText) const;
  static void Place(files::AtomicFile& prepared, const QString& targetPathText);

 private:
  QString pathText_;
  std::shared_ptr<jet::Database> database_;  // must outlive turn_
  std::unique_ptr<jet::WriteTurn> turn_;
};

}  // namespace dao
