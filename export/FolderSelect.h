// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>

class QWidget;

// Lets the user choose a folder (path text). Starts from the folder that was chosen last.
class FolderSelect : public QObject {
  Q_OBJECT

 public:
  FolderSelect(QWidget* owner, const QString& name);

  void SetPrompt(const QString& prompt) { prompt_ = prompt; }
  void SetMayCreate(bool mayCreate) { mayCreate_ = mayCreate; }
  void SetFolder(const QString& folder) { folder_ = folder; }

  // Shows the chooser and returns the folder, or the start folder when the user cancels. Warns about a folder outside
  // all mapped drives.
  QString Browse();

 private:
  QWidget* owner_;
  QString prompt_;
  QString folder_;
  bool mayCreate_ = false;
};
