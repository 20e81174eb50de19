// SPDX-License-Identifier: MIT
#pragma once

#include <QStringView>

// The number of changes that wait in the offline log of the current local database for the next export, as users count
// them: an item that was saved with its list of spots is one. Each statement that could not be logged yet is one more.
// Throws runtime::Error.
int CountWaitingChanges();

// Whether a statement of the log (its text there) belongs to the item that was saved or deleted with it.
bool IsListStatement(QStringView sqlSyntax);
