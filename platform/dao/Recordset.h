// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>

#include <memory>

namespace dao {

struct ResultRows;

// The rows of a SELECT. All of them are held from the moment it is opened: no lock and no cursor stays behind, and a
// loop over it may delete the very rows it walks. It outlives the Database it came from. One thread at a time.
// Every failure is a runtime::Error.
class Recordset {
 public:
  Recordset() = default;  // as if closed
  explicit Recordset(std::shared_ptr<const ResultRows> rows) : rows_(std::move(rows)) {}

  bool Bof() const;  // true only when there are no rows: one never moves before the first
  bool Eof() const;
  void MoveFirst();  // an error when there are no rows
  void MoveNext();   // an error at the end
  int RecordCount() const;

  // The value of the current row by field name, without regard to letter case. NULL is an invalid QVariant. Otherwise
  // by the field's type: bool, int (qint64 beyond 32 bits), double, QString, QDateTime, QByteArray; an expression has
  // the type of its value. An unknown name and a missing current row are errors.
  QVariant Field(const QString& name) const;

  // The columns in their order; a column by its place from 0.
  QStringList FieldNames() const;
  QVariant Field(int column) const;

  void Close();

 private:
  const ResultRows& Rows() const;

  std::shared_ptr<const ResultRows> rows_;
  int position_ = 0;
};

}  // namespace dao
