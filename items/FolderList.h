// SPDX-License-Identifier: MIT
#pragma once

#include "platform/controls/ListBox.h"

#include <QElapsedTimer>
#include <QStringList>

// A list of folders: from the root of a drive down to the current one, then its subfolders. Lines show names, indented
// by depth; List gives the full path text.
class FolderList : public controls::ListBox {
  Q_OBJECT

 public:
  explicit FolderList(QWidget* parent = nullptr);

  // The folder whose tree is shown; empty at first.
  QString Path() const { return path_; }
  // Shows another folder's tree, nothing selected. Throws runtime::Error, and keeps what it showed, when the folder is
  // not there, not reachable or not readable.
  void SetPath(const QString& pathText);
  // The line of the current folder.
  int PathLine() const { return pathLine_; }

  // The full path of a line. Throws runtime::Error for an index out of range.
  QString List(int index) const;

  // Typing goes to the next folder whose name begins so.
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
