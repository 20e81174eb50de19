// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QVariant>

namespace runtime {

// Removes blanks (character 32 only) at both ends.
QString TrimBlanks(const QString& text);
QStringView TrimBlanks(QStringView text);  // part of `text`

// Numeric text: optional blanks around, an optional sign, digits, at most one decimal comma or point. No exponent, no
// hexadecimal, no thousands separator: a comma or point followed by exactly three digits makes the text not numeric.
bool IsNumeric(const QString& text);
// NULL and dates are not numeric; numbers and booleans are; for a text the rule above holds.
bool IsNumeric(const QVariant& value);

// The value of a numeric text; an Error that names the text otherwise.
double ToDouble(const QString& text);
// Whole numbers (ToLong 32 bits, ToInteger 16): a fraction is rounded half to even; out of range is an overflow Error.
qint32 ToLong(const QString& text);
qint32 ToLong(const QVariant& value);
qint16 ToInteger(const QString& text);
qint32 ToLong(double value);
qint16 ToInteger(double value);

// Arithmetic in 16 and 32 bits. Throws an overflow Error when the result does not fit.
qint16 AddInteger(qint16 left, qint16 right);
qint16 MultiplyInteger(qint16 left, qint16 right);
qint32 SubtractLong(qint32 left, qint32 right);

}  // namespace runtime
