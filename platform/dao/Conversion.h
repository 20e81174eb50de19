// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/TableDef.h"
#include "platform/dao/Value.h"

#include <QString>
#include <QVariant>

namespace dao {

// Converts a value to the type of a field: a number becomes a day number for a Date, a numeric text becomes a number, a
// number becomes text for a Text, a fraction is rounded half to even for a whole-number field, NULL in a Boolean is 0.
// Error with the names of field and table: a text that is too long, empty where that is not allowed, or not numeric, a
// number out of range, NULL in a required field. An autonumber may be NULL: the storage then assigns the number.
Value ConvertToField(const QString& table, const FieldDef& field, const ValueView& value);

// A default value as a Value.
Value ValueOfVariant(const QVariant& variant);

}  // namespace dao
