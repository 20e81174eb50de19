// SPDX-License-Identifier: MIT
#pragma once

#include "platform/controls/ListBox.h"

#include <QElapsedTimer>
#include <QStringList>

// A list of folders: from the root of a drive down to the current folder, then its subfolders. Lines show names,
// indented by depth; List returns the full path text.
class FolderList : public controls::ListBox {
  Q_OBJECT

 public:
  explicit FolderList(QWidget* parent = nullptr);

  // The current folder; empty at first.
  QString Path() const { return path_; }
  // Shows another folder without a selection. Throws runtime::Error, without a change, when the folder is missing,
  // unreachable or unreadable.
  void SetPath(const QString& pathText);
  // The line of the current folder.
  int PathLine() const { return pathLine_; }

  // The full path of a line. Throws runtime::Error for an index out of range.
  QString List(int index) const;

  // Typing selects the next folder whose name starts with the text.
  void keyboardSearch(const QString& typed) override;

 private:
  void AddFolder(const QString& path, const QString& name, int depth);

  QString path_;
  int pathLine_ = -1;
  QStringList paths_;
  QStringList names_;
  QString typed_;
  QElapsedTimer sinceTyped_;
};
