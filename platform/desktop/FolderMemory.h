// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <memory>

class QSettings;

namespace desktop {

// Remembers in a settings file, per kind ("item-spots", ...), in which folder the user last chose a file and its
// suffix. The file choosers use it while an instance exists; the newest instance counts. User-interface thread only.
class FolderMemory {
 public:
  // `file` is a host path, created when missing. Without write permission nothing is stored; that is not an error.
  explicit FolderMemory(const QString& file);
  ~FolderMemory();
  FolderMemory(const FolderMemory&) = delete;
  FolderMemory& operator=(const FolderMemory&) = delete;

  // Host path of the folder; empty when none is stored. Also empty when the folder is gone or its drive does not
  // respond: a dialog opened there would hang.
  static QString FolderOf(const QString& kind);
  // The suffix of the last chosen file ("wav"); empty when none is stored.
  static QString SuffixOf(const QString& kind);
  // Stores the choice; `file` is its host path. No effect without an instance.
  static void Chosen(const QString& kind, const QString& file);

 private:
  std::unique_ptr<QSettings> folders_;
  FolderMemory* previous_;
  static inline FolderMemory* active_ = nullptr;
};

}  // namespace desktop
