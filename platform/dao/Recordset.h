// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>

#include <memory>

namespace dao {

struct ResultRows;

// The rows of a SELECT. All rows are read when it is opened: it holds no lock or cursor, and a loop over it may delete
// the rows that it reads. May outlive its Database. One thread at a time. Every failure is a runtime::Error.
class Recordset {
 public:
  Recordset() = default;  // closed
  explicit Recordset(std::shared_ptr<const ResultRows> rows) : rows_(std::move(rows)) {}

  bool Bof() const;  // true only when there are no rows: there is no move before the first
  bool Eof() const;
  void MoveFirst();  // an error when there are no rows
  void MoveNext();   // an error at the end
  int RecordCount() const;

  // A value of the current row by field name, ignoring letter case. NULL is an invalid QVariant; else bool, int (qint64
  // beyond 32 bits), double, QString, QDateTime or QByteArray by the type of the field; an expression has the type of
  // its value. An unknown name and a missing current row are errors.
  QVariant Field(const QString& name) const;

  // The names of the columns in order; a value by the index of its column from 0.
  QStringList FieldNames() const;
  QVariant Field(int column) const;

  void Close();

 private:
  const ResultRows& Rows() const;

  std::shared_ptr<const ResultRows> rows_;
  int position_ = 0;
};

}  // namespace dao
