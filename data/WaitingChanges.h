// SPDX-License-Identifier: MIT
#pragma once

#include <QStringView>

// The number of changes that wait in the offline log of the current local database for the next export, as users count
// them: an item that was saved with its list of spots is one. Each statement that could not be logged yet is one more.
// Throws runtime::Error.
int CountWaitingChanges();

// Counts the statements of the log, added in their order, in the same way.
class ChangeCounter {
 public:
  void Add(QStringView sqlSyntax);
  int Count() const { return count_; }

 private:
  int count_ = 0;
  bool listMayFollow_ = false;  // of the item that was counted last
  bool itemMayFollow_ = false;  // that list was counted: a cleanup deletes the list, then the item
};

// Whether a statement of the log (its text there) belongs to the item that was saved or deleted with it.
bool IsListStatement(QStringView sqlSyntax);
