// SPDX-License-Identifier: MIT
#include "platform/dao/Recordset.h"

#include "platform/dao/ResultRows.h"
#include "platform/runtime/Error.h"

using namespace Qt::StringLiterals;

namespace dao {
namespace {

[[noreturn]] void ThrowNoCurrentRow() {
  throw runtime::Error(u"Er is geen huidige record."_s);
}

}  // namespace

const ResultRows& Recordset::Rows() const {
  if (!rows_) throw runtime::Error(u"De recordset is gesloten."_s);
  return *rows_;
}

bool Recordset::Bof() const {
  return Rows().rowCount == 0;
}
bool Recordset::Eof() const {
  return position_ >= Rows().rowCount;
}
int Recordset::RecordCount() const {
  return Rows().rowCount;
}

void Recordset::MoveFirst() {
  if (Rows().rowCount == 0) ThrowNoCurrentRow();
  position_ = 0;
}

void Recordset::MoveNext() {
  if (Eof()) ThrowNoCurrentRow();
  ++position_;
}

QVariant Recordset::Field(const QString& name) const {
  const QStringList& names = Rows().names;
  for (qsizetype i = 0; i < names.size(); ++i) {
    if (names[i].compare(name, Qt::CaseInsensitive) == 0) return Field(static_cast<int>(i));
  }
  throw runtime::Error(u"Het veld '%1' komt niet voor in de recordset."_s.arg(name));
}

QStringList Recordset::FieldNames() const {
  return Rows().names;
}

QVariant Recordset::Field(int column) const {
  const ResultRows& rows = Rows();
  if (Eof()) ThrowNoCurrentRow();
  if (column < 0 || column >= rows.names.size()) {
    throw runtime::Error(u"De recordset heeft geen veld met nummer %1."_s.arg(column));
  }
  return rows.values[static_cast<std::size_t>(position_) * static_cast<std::size_t>(rows.names.size()) +
                     static_cast<std::size_t>(column)];
}

void Recordset::Close() {
  rows_.reset();
  position_ = 0;
}

}  // namespace dao
