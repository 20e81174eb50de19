// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/TableDef.h"
#include "platform/dao/Value.h"

#include <QString>
#include <QVariant>

#include <sqlite3.h>

#include <vector>

namespace dao {

// A column of the result of a SELECT: its name, and its values with the type of their field.
class ResultColumn {
 public:
  ResultColumn(sqlite3_stmt* statement, int column);
  // A field of a table.
  ResultColumn(QString name, FieldType type);

  const QString& Name() const { return name_; }
  QVariant Read(sqlite3_stmt* statement) const;
  // The same for a value of the field.
  QVariant Read(const ValueView& value) const;

 private:
  QVariant Whole(qint64 number) const;
  QVariant Number(double number) const;

  int column_ = 0;
  QString name_;
  bool isBoolean_;
  bool isDate_;
  bool isFloating_;
};

std::vector<ResultColumn> ResultColumnsOf(sqlite3_stmt* statement);

}  // namespace dao
