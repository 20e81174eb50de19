// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QVariant>

#include <optional>

namespace dao {

// The value of a field's default expression when that is a constant: a number, a text in double quotes, a date between
// #, True, False, Yes, No or Null (an invalid QVariant). Nothing for any other expression.
std::optional<QVariant> ConstantOf(const QString& expression);

// The expression of a constant; empty for an invalid QVariant.
QString ExpressionOf(const QVariant& value);

}  // namespace dao
