// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

namespace dao {

// Puts the rows that the tables have in the database at `source` in the place of those in `target`, in all of the
// tables or in none. Fields meet by name: one that the source lacks stays empty, one that the target lacks is an error,
// and so is one of another type, and a table that either file lacks. Gives the number of rows put back. Path texts;
// runtime::Error.
int RestoreTables(const QString& source, const QString& target, const QStringList& tables);

}  // namespace dao
