// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QVariant>

namespace runtime {

// Removes blanks (character 32 and no other) at both ends.
QString TrimBlanks(const QString& text);
QStringView TrimBlanks(QStringView text);  // part of `text`

// Numeric text: optional blanks around, an optional sign, digits, at most one decimal comma or point. No exponent, no
// hexadecimal, no thousands mark: a comma or point followed by exactly three digits makes the text not numeric.
bool IsNumeric(const QString& text);
// NULL and dates are not numeric; numbers and booleans are; a text is by the rule above.
bool IsNumeric(const QVariant& value);

// The value of a numeric text or number; an Error naming the text otherwise.
double ToDouble(const QString& text);
// Whole numbers: a fraction is rounded half to even; out of range is an overflow Error.
qint32 ToLong(const QString& text);
qint32 ToLong(const QVariant& value);
qint16 ToInteger(const QString& text);
qint32 ToLong(double value);
qint16 ToInteger(double value);

// Adds within 16 bits; an overflow Error when the sum does not fit.
qint16 AddInteger(qint16 left, qint16 right);
qint16 MultiplyInteger(qint16 left, qint16 right);
// left - right within 32 bits; an overflow Error when the difference does not fit.
qint32 SubtractLong(qint32 left, qint32 right);

}  // namespace runtime
