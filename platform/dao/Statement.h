// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace dao {

enum class Verb { Select, Insert, Update, Delete };

// A statement of the Jet dialect, taken apart and rewritten for the SQL engine: every name is quoted, every text
// literal is a numbered parameter, comparisons of UCase follow the text order, and what has no place in the dialect is
// refused. Nothing of the statement's meaning is left to the engine's own readings of quotes, comments or words.
struct Statement {
  Verb verb = Verb::Select;
  QString source;                 // as given, for error texts
  QString body;                   // rewritten; of an INSERT only what gives the rows, from VALUES or SELECT on
  QStringList texts;              // values of the parameters ?1, ?2, ... of the body
  QStringList names;              // every name in it: what may be a table
  QString target;                 // INSERT, UPDATE, DELETE: the table
  QStringList fields;             // INSERT: the fields named (empty = none); UPDATE: the fields set
  bool fromSelect = false;        // INSERT fed by a SELECT
  QString wholeTable;             // INSERT fed by "SELECT * FROM table" and nothing else: that table
  bool everyRow = false;          // UPDATE, DELETE: without a condition
  std::optional<QString> inFile;  // INSERT: the path text behind IN
};

// An Error that shows the statement when it is empty, not of the dialect, or sets a field twice.
Statement ParseStatement(const QString& sql);

}  // namespace dao
