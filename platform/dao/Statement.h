// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/SoughtText.h"
#include "platform/dao/Tokens.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace dao {

enum class Verb { Select, Insert, Update, Delete };

// A statement of the Jet dialect, parsed and rewritten for SQLite: every name is quoted, every text literal is a
// numbered parameter, comparisons of UCase use the text order, and everything outside the dialect is an error. SQLite's
// own rules for quotes, comments and keywords therefore never apply.
struct Statement {
  Verb verb = Verb::Select;
  QString source;                    // as given, for error texts
  QString body;                      // rewritten; for INSERT only the part from VALUES or SELECT on
  QStringList texts;                 // values of the parameters ?1, ?2, ... of the body
  QStringList names;                 // every name in it, each of which may be a table
  QString target;                    // INSERT, UPDATE, DELETE: the table
  QStringList fields;                // INSERT: the fields listed (empty = none); UPDATE: the fields set
  bool fromSelect = false;           // INSERT ... SELECT
  QString wholeTable;                // INSERT from exactly "SELECT * FROM table": that table
  std::optional<SoughtText> sought;  // SELECT
  bool everyRow = false;             // UPDATE, DELETE: without a condition
  std::optional<QString> inFile;     // INSERT: the path text after IN
};

// Throws runtime::Error, which shows the statement, when it is empty, outside the dialect, or sets a field twice.
// `tokens`: those of `sql`.
Statement ParseStatement(const QString& sql, const std::vector<Token>& tokens);
Statement ParseStatement(const QString& sql);

}  // namespace dao
