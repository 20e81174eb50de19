// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

#include <functional>
#include <memory>

namespace files {
class AtomicFile;
}

namespace runtime {

// files::AtomicFile for path texts: a file in the making. Its content is written piece by piece under a temporary name
// in the same folder; Complete, and then Place, give it its own. Going without Place removes the temporary file. Paths
// are path texts; every Error names the file that was to be.
class StagedFile {
 public:
  explicit StagedFile(const QString& pathText);
  ~StagedFile();
  StagedFile(const StagedFile&) = delete;
  StagedFile& operator=(const StagedFile&) = delete;

  // Puts a piece behind what was written before.
  void Write(const QByteArray& piece);
  // Returns when the content is on the disk; nothing is written after that.
  void Complete();
  // The temporary name, a hidden one in the folder of the file (see files::TemporaryName).
  const QString& TemporaryPath() const { return temporaryText_; }
  // Returns when the temporary name will survive a power cut.
  void SyncName();
  // Takes the place of an earlier file of that name in one step. When this returns it is there to stay; after an Error
  // that IsDone it is there, but not yet safe from a power cut.
  void Place();
  // As Place, but under a name in the same folder that does not exist: false, and nothing has happened, when it does.
  // Taking the name is one step, so that of several programs only one gets it.
  [[nodiscard]] bool PlaceNew(const QString& pathText);
  // Leaves the temporary file where it is.
  void Keep();

 private:
  void Named(const std::function<void()>& step) const;

  QString pathText_;
  QString temporaryText_;
  std::unique_ptr<files::AtomicFile> file_;
};

}  // namespace runtime
