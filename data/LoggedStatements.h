// SPDX-License-Identifier: MIT
#pragma once

#include "data/ExportBasis.h"

#include <QString>
#include <QStringView>

#include <functional>
#include <optional>

// A row of the offline log; its text is valid during the visit.
struct LogRow {
  std::optional<qint32> id;
  QStringView sqlSyntax;  // as it is stored
};

// Visits the rows of the log of a local database (path text) in recording order, only those up to `last` where one is
// given; rows without a number come first. Throws runtime::Error.
void VisitLogRows(const QString& localDatabasePath, std::optional<qint32> last,
                  const std::function<void(const LogRow&)>& visit);

// A row of the offline log with the rows that its statement changed; without them where they were not kept (by an
// earlier version of the program).
struct LoggedStatement {
  qint32 id = 0;      // 0 in a row that has none
  QString sqlSyntax;  // trimmed of blanks
  std::optional<basis::Entry> entry;
};

// As VisitLogRows: one visit for each row of the log.
void VisitLog(const QString& localDatabasePath, std::optional<qint32> last,
              const std::function<void(const LoggedStatement&)>& visit);
