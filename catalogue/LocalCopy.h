#pragma once
#include <QString>

// One of the copies of the write layer: TransItemsToLocal and its like.
using CopyToLocal = bool (*)(const QString& sourcePath, const QString& localPath);

// Empties a copy table of the local database and fills it anew from the server database. Each step lets windows repaint
// and leaves its result in global.lastResult; a failure has been shown by the write layer. When the table was emptied
// and could not be filled, the user is asked whether the rows that were there shall come back.
void RefreshLocalCopy(const QString& copyTable, CopyToLocal copy);
