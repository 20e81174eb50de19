// SPDX-License-Identifier: MIT
#pragma once

#include <QStringView>

// What waits in the offline log for the next export.
struct WaitingChanges {
  int statements = 0;
  // As users count them: an item that was saved with its list of spots is one.
  int changes = 0;
};

// Those of the current local database, with the statements that could not be logged yet. Throws runtime::Error.
WaitingChanges CountWaitingChanges();

// Whether a statement of the log (its text there) belongs to the item that was saved or deleted with it.
bool IsListStatement(QStringView sqlSyntax);
