// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QString>

// One of the copies of the write layer: TransItemsToLocal and its like.
using CopyToLocal = bool (*)(const QString& sourcePath, const QString& localPath);

// A copy table of the local database and what fills it.
struct CopyTable {
  QString name;
  CopyToLocal fill = nullptr;
};

// Empties copy tables of the local database and fills them anew from the server database, one after the other. Each
// step lets windows repaint and leaves its result in global.lastResult; a failure has been shown by the write layer.
// Before it a backup of the local database is made: when a table was emptied and could not be filled, the user is asked
// whether its rows shall come back from there.
void RefreshLocalCopies(const QList<CopyTable>& tables);
