// SPDX-License-Identifier: MIT
#pragma once

#include <QList>

// The records that editors have saved, for the list that opened them: it shows them after it is filled again.

void NoteSavedRecord(qint32 id);
// Empties the notes and returns them, oldest first.
QList<qint32> TakeSavedRecords();
