// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

#include <deque>
#include <vector>

class QWidget;

namespace desktop {

// An open-file dialog that remembers its last choice; a form has one as a member. The first selected filter is the one
// that matches the last chosen file, or the last file of its kind. All paths are host paths.
class FileChooser {
 public:
  void SetTitle(const QString& title) { title_ = title; }
  // "description|pattern|description|pattern"; several patterns for one description are separated by ';'.
  void SetFilter(const QString& filter) { filter_ = filter; }
  // Where the dialog opens before the first choice. Without one it opens in the folder where a file of its kind was
  // chosen last, also in earlier runs (FolderMemory), or else in the user's home folder.
  void SetStartFolder(const QString& folder) { startFolder_ = folder; }
  void SetKind(const QString& kind) { kind_ = kind; }

  // Shows the dialog modally and returns FileName(): the new choice, or after a cancel the previous one (empty at
  // first).
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

// Lets the user choose a folder. Returns `startFolder` on cancel. `mayCreate` lets the user create a folder.
QString ChooseFolder(QWidget* owner, const QString& prompt, const QString& startFolder, bool mayCreate);

// Lets the user choose a file to save to, starting with `proposal` (folder and name). Asks before an existing file is
// chosen. Returns an empty text on cancel.
QString ChooseSaveFile(QWidget* owner, const QString& title, const QString& filter, const QString& proposal);

// Converts a filter text to Qt's form: one "description (pattern ...)" per entry, patterns in lower and upper case. The
// description may contain patterns too.
QStringList NameFilters(const QString& filter);

struct ShownFileChooser {
  QString title;
  QString filter;          // empty for a folder
  QString startFolder;     // for a file to save: the proposal
  bool mayCreate = false;  // for a folder: the user may create one
};

// For tests and the screenshot tour: while an instance exists, no dialog is shown and the answers given here are used
// in order; without an answer left the dialog counts as cancelled. Nests: the newest instance is used.
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
  // Records the request and removes and returns the next answer; empty = cancelled.
  QString Take(const ShownFileChooser& request);

 private:
  std::deque<QString> answers_;
  std::vector<ShownFileChooser> shown_;
  FileChooserScript* previous_;
  static inline FileChooserScript* active_ = nullptr;
};

}  // namespace desktop
