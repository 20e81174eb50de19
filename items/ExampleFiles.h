// SPDX-License-Identifier: MIT
#pragma once

#include "data/forms/FilePresenceChecker.h"
#include "export/playout/Block.h"

#include <QString>

#include <functional>
#include <vector>

class QObject;

// Whether the files that a name pattern gives at this moment are there, looked up in the background.
class ExampleFiles {
 public:
  // `tell` is called in the receiver's thread with what a label says. The receiver must outlive this.
  ExampleFiles(QObject* receiver, std::function<void(const QString& text)> tell);

  // Instead of those looked for before. `count` files where the pattern numbers them.
  void Look(const FileNamePattern& pattern, int count);

 private:
  void TakeFiles(const std::vector<FilePresenceChecker::Result>& found, bool last);

  std::function<void(const QString& text)> tell_;
  std::vector<runtime::Presence> found_;
  FilePresenceChecker checker_;
};
