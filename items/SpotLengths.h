// SPDX-License-Identifier: MIT
#pragma once

#include "data/SpotState.h"
#include "data/forms/FilePresenceChecker.h"

#include <QHash>
#include <QSet>
#include <QString>

#include <functional>

class QObject;

namespace controls {
class ListBox;
}

// Adds state and length to the lines of an item's spot list, without changing their texts. Files are checked in the
// background.
class SpotLengths {
 public:
  // `changed` is called in the receiver's thread after file checks. The receiver must outlive this object.
  SpotLengths(QObject* receiver, std::function<void()> changed);

  // The next Show reads every spot again.
  void Forget();

  // Sets state and length of each line. Reads spots that were not read yet, from the current catalogue, and checks
  // files that were not checked yet. No error box: after a failure no states are shown.
  void Show(controls::ListBox& list);

  // "5 item-spots, samen 2:29".
  QString Total(const controls::ListBox& list) const;

 private:
  void ReadMissing(const controls::ListBox& list);
  void TakeFiles(const std::vector<FilePresenceChecker::Result>& found, bool last);

  QHash<qint64, SpotFacts> spots_;
  QSet<qint64> read_;              // also those that are not there
  QHash<qint64, bool> requested_;  // spots whose file check was started
  std::function<void()> changed_;
  FilePresenceChecker checker_;
};
