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

// files::AtomicFile for path texts. The content is written piece by piece under a temporary name in the same folder;
// Complete, and then Place, give it its final name. Destruction without Place removes the temporary file. Every Error
// names the final file.
class StagedFile {
 public:
  explicit StagedFile(const QString& pathText);
  // For a file whose name is chosen at the end. `ownerPathText`: the existing file on whose behalf it is written. What
  // a killed program left in the folder on behalf of that file is removed.
  StagedFile(const QString& pathText, const QString& ownerPathText);
  ~StagedFile();
  StagedFile(const StagedFile&) = delete;
  StagedFile& operator=(const StagedFile&) = delete;

  // Appends a piece.
  void Write(const QByteArray& piece);
  // Syncs the content to the disk; nothing may be written after that.
  void Complete();
  // The hidden temporary name in the folder of the file (see files::TemporaryName).
  const QString& TemporaryPath() const { return temporaryText_; }
  // Makes the directory entry of the temporary file durable.
  void SyncName();
  // Replaces an earlier file of that name in one step, and is durable on return. After an Error that IsDone the new
  // file is in place, but may not survive a power cut.
  void Place();
  // As Place, but under another name in the same folder; false, with nothing changed, when that name exists. The name
  // is claimed in one step, so only one of several programs can get it.
  [[nodiscard]] bool PlaceNew(const QString& pathText);
  // Keeps the temporary file after destruction.
  void Keep();

 private:
  void Open(const QByteArray& owner);
  void WithFileName(const std::function<void()>& step) const;

  QString pathText_;
  QString temporaryText_;
  std::unique_ptr<files::AtomicFile> file_;
};

}  // namespace runtime
