// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QVariant>

#include <optional>

namespace dao {

// The value of a field's default expression where that is a constant: a number, a text between double quotes, a date
// between #, True, False, Yes, No or Null; an invalid QVariant is none. Nothing for any other expression.
std::optional<QVariant> ConstantOf(const QString& expression);

// The expression that stores the value; empty for an invalid one.
QString ExpressionOf(const QVariant& value);

}  // namespace dao
