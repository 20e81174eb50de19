// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QVariant>

#include <sqlite3.h>

#include <vector>

namespace dao {

// A column of the result of a SELECT: its name, and its values with the type of their field.
class ResultColumn {
 public:
  ResultColumn(sqlite3_stmt* statement, int column);

  const QString& Name() const { return name_; }
  QVariant Read(sqlite3_stmt* statement) const;

 private:
  QVariant Whole(qint64 number) const;
  QVariant Number(double number) const;

  int column_;
  QString name_;
  bool isBoolean_;
  bool isDate_;
  bool isFloating_;
};

std::vector<ResultColumn> ResultColumnsOf(sqlite3_stmt* statement);

}  // namespace dao
