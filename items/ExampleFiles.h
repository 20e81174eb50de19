// SPDX-License-Identifier: MIT
#pragma once

#include "data/forms/FilePresenceChecker.h"
#include "export/playout/Block.h"

#include <QString>

#include <functional>
#include <vector>

class QObject;

// Checks in the background whether the files of a name pattern for this moment exist.
class ExampleFiles {
 public:
  // `report` is called in the receiver's thread with the text for a label. The receiver must outlive this object.
  ExampleFiles(QObject* receiver, std::function<void(const QString& text)> report);

  // Replaces the previous check. `count` files if the pattern numbers them.
  void Look(const FileNamePattern& pattern, int count);

 private:
  void TakeFiles(const std::vector<FilePresenceChecker::Result>& found, bool last);

  std::function<void(const QString& text)> report_;
  std::vector<runtime::Presence> found_;
  FilePresenceChecker checker_;
};
