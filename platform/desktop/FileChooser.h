// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

#include <deque>
#include <vector>

class QWidget;

namespace desktop {

// An open-file dialog that remembers its last choice, as a form keeps it. It begins with the filter that shows the last
// chosen file, or files as they were chosen of its kind before. All paths are the host's own.
class FileChooser {
 public:
  void SetTitle(const QString& title) { title_ = title; }
  // "description|pattern|description|pattern"; several patterns of one description are separated by ';'.
  void SetFilter(const QString& filter) { filter_ = filter; }
  // Where the dialog opens while nothing has been chosen yet. Without one it opens where files of its kind were chosen
  // last, also in earlier runs (FolderMemory), and the very first time in the user's own folder.
  void SetStartFolder(const QString& folder) { startFolder_ = folder; }
  void SetKind(const QString& kind) { kind_ = kind; }

  // Shows the dialog modally and returns FileName(): the new choice, or after a cancel the one before (empty at first).
  QString ShowOpen(QWidget* owner);
  QString FileName() const { return fileName_; }

 private:
  QString FirstFolder() const;

  QString title_;
  QString filter_;
  QString startFolder_;
  QString kind_;
  QString fileName_;
};

// Lets the user choose a folder; on cancel the start folder is returned.
QString ChooseFolder(QWidget* owner, const QString& prompt, const QString& startFolder, bool mayCreate);

// Lets the user say where to save, beginning with a proposal (folder and name); asks before it answers with a file that
// exists. Empty on cancel.
QString ChooseSaveFile(QWidget* owner, const QString& title, const QString& filter, const QString& proposal);

// The given filter text as Qt wants it: one "description (pattern ...)" an entry, patterns in both letter cases. The
// description may hold patterns of its own.
QStringList NameFilters(const QString& filter);

struct ShownFileChooser {
  QString title;
  QString filter;          // empty for a folder
  QString startFolder;     // of a file to save: the proposal
  bool mayCreate = false;  // of a folder: one may be made
};

// For tests and tours: while one lives, no dialog is opened and the answers given here are taken in their order;
// without one left the dialog counts as cancelled. Scripts nest: the youngest answers.
class FileChooserScript {
 public:
  FileChooserScript();
  ~FileChooserScript();
  FileChooserScript(const FileChooserScript&) = delete;
  FileChooserScript& operator=(const FileChooserScript&) = delete;

  void Choose(const QString& path) { answers_.push_back(path); }
  void Cancel() { answers_.emplace_back(); }
  const std::vector<ShownFileChooser>& Shown() const { return shown_; }

  static FileChooserScript* Active();
  // Notes the request and takes the next answer; empty: cancelled.
  QString Take(const ShownFileChooser& request);

 private:
  std::deque<QString> answers_;
  std::vector<ShownFileChooser> shown_;
  FileChooserScript* older_;
  static inline FileChooserScript* youngest_ = nullptr;
};

}  // namespace desktop
