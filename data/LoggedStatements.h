// SPDX-License-Identifier: MIT
#pragma once

#include "data/ExportBasis.h"

#include <QString>

#include <functional>
#include <optional>

// A row of the offline log with the rows that its statement changed; without them where they were not kept (by an
// earlier version of the program).
struct LoggedStatement {
  qint32 id = 0;      // 0 in a row that has none
  QString sqlSyntax;  // trimmed of blanks
  std::optional<basis::Entry> entry;
};

// Visits the log of a local database (path text) in recording order, only its rows up to `last` where one is given.
// Throws runtime::Error.
void VisitLog(const QString& localDatabasePath, std::optional<qint32> last,
              const std::function<void(const LoggedStatement&)>& visit);
