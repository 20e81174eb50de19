// SPDX-License-Identifier: MIT
#include "platform/dao/TableDef.h"

#include "platform/runtime/Error.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace dao {
namespace {

constexpr qsizetype kLongestName = 64;
constexpr qsizetype kMaxFieldsOfTable = 255;
constexpr qsizetype kMaxIndexes = 32;
constexpr qsizetype kMaxFieldsOfIndex = 10;

[[noreturn]] void Refuse(const TableDef& table, const QString& reason) {
  throw runtime::Error(u"Kan de tabel '%1' niet maken: %2."_s.arg(table.name, reason));
}

void CheckName(const TableDef& table, const QString& name) {
  static const QString kForbidden = u".![]`\""_s;
  const bool allowed =
      !name.isEmpty() && name.size() <= kLongestName && !name.startsWith(u' ') &&
      std::none_of(name.begin(), name.end(), [](QChar c) { return c < u' ' || kForbidden.contains(c); });
  if (!allowed) Refuse(table, u"'%1' is geen geldige naam"_s.arg(name));
}

void CheckField(const TableDef& table, qsizetype at) {
  const FieldDef& field = table.fields[at];
  CheckName(table, field.name);
  if (table.FieldIndex(field.name) != at) Refuse(table, u"het veld '%1' komt tweemaal voor"_s.arg(field.name));
  const bool textSize = field.type != FieldType::Text || (field.size >= 1 && field.size <= 255);
  const bool binarySize = field.type != FieldType::Binary || (field.size >= 1 && field.size <= 510);
  const bool digits = field.type != FieldType::Numeric || (field.precision >= 1 && field.precision <= 28 &&
                                                           field.scale >= 0 && field.scale <= field.precision);
  if (!textSize || !binarySize || !digits)
    Refuse(table, u"het veld '%1' heeft een ongeldige grootte"_s.arg(field.name));
  if (field.autoNumber && field.type != FieldType::Long) {
    Refuse(table, u"het veld '%1' kan geen automatisch nummer zijn"_s.arg(field.name));
  }
}

void CheckIndex(const TableDef& table, const IndexDef& index) {
  CheckName(table, index.name);
  if (index.fields.isEmpty() || index.fields.size() > kMaxFieldsOfIndex) {
    Refuse(table, u"de index '%1' heeft geen velden of te veel"_s.arg(index.name));
  }
  for (const IndexField& field : index.fields) {
    if (table.FieldIndex(field.name) < 0) {
      Refuse(table, u"de index '%1' noemt het onbekende veld '%2'"_s.arg(index.name, field.name));
    }
  }
}

}  // namespace

int TableDef::FieldIndex(QStringView fieldName) const {
  for (qsizetype i = 0; i < fields.size(); ++i) {
    if (fields[i].name.compare(fieldName, Qt::CaseInsensitive) == 0) return static_cast<int>(i);
  }
  return -1;
}

void CheckTableDef(const TableDef& table) {
  CheckName(table, table.name);
  if (table.fields.isEmpty() || table.fields.size() > kMaxFieldsOfTable) Refuse(table, u"geen velden of te veel"_s);
  if (table.indexes.size() > kMaxIndexes) Refuse(table, u"te veel indexen"_s);
  for (qsizetype i = 0; i < table.fields.size(); ++i)
    CheckField(table, i);
  for (const IndexDef& index : table.indexes)
    CheckIndex(table, index);
}

}  // namespace dao
