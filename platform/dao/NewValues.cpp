// SPDX-License-Identifier: MIT
#include "platform/dao/NewValues.h"

#include "platform/runtime/Error.h"

using namespace Qt::StringLiterals;

namespace dao {

Value DefaultOf(const TableDef& table, const FieldDef& field) {
  if (!field.defaultExpression.isEmpty()) {
    throw runtime::Error(
        u"Het veld '%1' van de tabel '%2' heeft een standaardwaarde die berekend moet worden (%3); dat "
        "wordt niet ondersteund."_s.arg(field.name, table.name, field.defaultExpression));
  }
  const Value value = ValueOfVariant(field.defaultValue);
  return ConvertToField(table.name, field, View(value));
}

}  // namespace dao
