// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/TableDef.h"
#include "platform/dao/Value.h"

#include <QString>
#include <QVariant>

namespace dao {

// The value as the field stores it: a number becomes a day of a Date, the text of a number a number, a number the text
// of a Text, a fraction is rounded half to even for a whole-number field, NULL in a Boolean is 0. What does not fit is
// an Error naming field and table: a text too long or empty where that is not allowed, a text that is no number, a
// number out of range, NULL in a required field. An autonumber may be NULL: the file then chooses.
Value ConvertToField(const QString& table, const FieldDef& field, const ValueView& value);

// A default value as it goes into a field.
Value ValueOfVariant(const QVariant& variant);

}  // namespace dao
