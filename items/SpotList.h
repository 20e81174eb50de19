// SPDX-License-Identifier: MIT
#pragma once

#include "data/SpotFacts.h"
#include "data/forms/FilePresenceChecker.h"

#include <QHash>
#include <QString>

#include <functional>

class QObject;

namespace controls {
class ListBox;
}

// Helps the list of an item's spots to show the state and length of each: an aid beside the given texts, which it never
// touches. Whether files are there is looked up in the background.
class SpotLengths {
 public:
  // `changed` is called in the receiver's thread once more is known of the files. The receiver must outlive this.
  SpotLengths(QObject* receiver, std::function<void()> changed);

  // Reads all item-spots of the present catalogue. No error box: without them the list shows none.
  void Read();

  // Puts each listed spot's state and length beside its line, and looks for the files of those not looked at yet.
  void Show(controls::ListBox& list);

  // "5 item-spots, samen 2:29".
  QString Total(const controls::ListBox& list) const;

 private:
  void TakeFiles(const std::vector<FilePresenceChecker::Result>& found, bool last);

  QHash<qint64, SpotFacts> spots_;
  QHash<qint64, bool> asked_;  // spots whose file was looked for
  std::function<void()> changed_;
  FilePresenceChecker checker_;
};
