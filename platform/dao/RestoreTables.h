// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QString>

namespace dao {

// A table to restore and the table with its rows in the other database.
struct RestoredTable {
  QString source;
  QString target;
};

// Replaces the rows of the tables in `target` by those in `source`, in one transaction; returns the number of rows
// written. Fields are matched by name: one that only the target has is NULL. Error: a field that only the source has, a
// field of another type, a table that is missing in either database. Paths are path texts.
int RestoreTables(const QString& source, const QString& target, const QList<RestoredTable>& tables);

}  // namespace dao
