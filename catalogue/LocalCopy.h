// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QString>

// A copy function of the write layer, such as TransItemsToLocal.
using CopyToLocal = bool (*)(const QString& sourcePath, const QString& localPath);

// A copy table of the local database and the function that fills it.
struct CopyTable {
  QString name;
  CopyToLocal fill = nullptr;
};

// Makes a backup of the local database, then empties each copy table and fills it again from the server database.
// Windows are repainted between the steps; the result of each step is in global.lastResult, and the write layer shows
// failures. When a table was emptied and could not be filled, the user is asked whether to restore its rows from the
// backup.
void RefreshLocalCopies(const QList<CopyTable>& tables);
