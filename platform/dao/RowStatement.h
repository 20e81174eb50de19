// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/Statement.h"
#include "platform/dao/Tokens.h"
#include "platform/dao/Value.h"

#include <QStringView>

#include <cstdint>
#include <deque>
#include <optional>
#include <vector>

namespace dao {

// A statement about one row: an INSERT of literals, a SELECT, UPDATE with literals or DELETE of the row with a whole
// number in one field, and a SELECT of the highest number of a field. Most statements of the screens are of these
// forms; RowEngine carries them out directly. Names and texts are views of the statement's text.
struct RowStatement {
  struct Column {
    QStringView field;
    QStringView name;  // after AS; empty: the name of the field
  };

  Verb verb = Verb::Select;
  QStringView table;
  std::vector<QStringView> fields;  // INSERT: those listed, empty = all; UPDATE: those set
  std::vector<ValueView> values;    // INSERT, UPDATE
  std::vector<Column> columns;      // SELECT: empty = all fields
  bool isHighest = false;           // SELECT of MAX of the only column
  QStringView keyField;             // all but INSERT and isHighest
  std::int64_t key = 0;
  std::deque<QString> unquoted;  // the texts among the values that had doubled quotes
};

// Nothing for any other statement, which may also be a wrong one.
std::optional<RowStatement> RowStatementOf(const std::vector<Token>& tokens);

}  // namespace dao
