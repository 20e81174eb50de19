// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <memory>

class QSettings;

namespace desktop {

// Where the user last chose a file of a kind ("item-spots", ...), and of which sort it was, kept in a file of the
// user's own from one run to the next. While one lives, the choosers ask it; the youngest counts. User-interface thread
// only.
class FolderMemory {
 public:
  // `file`: host path; made when missing. Without write permission nothing is kept, and nothing else happens.
  explicit FolderMemory(const QString& file);
  ~FolderMemory();
  FolderMemory(const FolderMemory&) = delete;
  FolderMemory& operator=(const FolderMemory&) = delete;

  // Host path of the folder; empty when nothing is known. A folder that is gone, or on a drive that does not answer, is
  // empty too: a dialog that opened there would keep the user waiting.
  static QString FolderOf(const QString& kind);
  // The suffix of the file chosen last ("wav"); empty when nothing is known.
  static QString SuffixOf(const QString& kind);
  // `file`: host path of what was chosen. Nothing without a memory.
  static void Chosen(const QString& kind, const QString& file);

 private:
  std::unique_ptr<QSettings> folders_;
  FolderMemory* older_;
  static inline FolderMemory* youngest_ = nullptr;
};

}  // namespace desktop
