// SPDX-License-Identifier: MIT
#include "platform/runtime/Numbers.h"

#include "platform/runtime/Error.h"

#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace runtime {
namespace {

bool IsDigit(QChar c) {
  return c >= u'0' && c <= u'9';
}

// A numeric text in the form that QString::toDouble reads; null when the text is not numeric.
QString Normalised(const QString& text) {
  QString number = TrimBlanks(text);
  qsizetype at = 0;
  if (at < number.size() && (number[at] == u'+' || number[at] == u'-')) ++at;
  qsizetype digits = 0;
  qsizetype mark = -1;
  for (; at < number.size(); ++at) {
    if (IsDigit(number[at])) {
      ++digits;
    } else if (mark < 0 && (number[at] == u',' || number[at] == u'.')) {
      mark = at;
    } else {
      return {};
    }
  }
  if (digits == 0) return {};
  if (mark >= 0) {
    if (number.size() - mark - 1 == 3) return {};  // could be a thousands separator
    number[mark] = u'.';
  }
  return number;
}

template <class Whole>
Whole Rounded(double value) {
  const double whole = std::nearbyint(value);  // the default rounding mode is half to even
  if (!(whole >= std::numeric_limits<Whole>::min() && whole <= std::numeric_limits<Whole>::max())) {
    throw Error(u"Overloop: het getal %1 is te groot of te klein."_s.arg(QString::number(value, 'g', 15)));
  }
  return static_cast<Whole>(whole);
}

template <class Whole>
Whole Checked(qint64 value) {
  if (value < std::numeric_limits<Whole>::min() || value > std::numeric_limits<Whole>::max()) {
    throw Error(u"Overloop: het getal %1 is te groot of te klein."_s.arg(value));
  }
  return static_cast<Whole>(value);
}

}  // namespace

QStringView TrimBlanks(QStringView text) {
  qsizetype first = 0;
  qsizetype last = text.size();
  while (first < last && text[first] == u' ')
    ++first;
  while (last > first && text[last - 1] == u' ')
    --last;
  return text.sliced(first, last - first);
}

QString TrimBlanks(const QString& text) {
  return TrimBlanks(QStringView(text)).toString();
}

bool IsNumeric(const QString& text) {
  return !Normalised(text).isNull();
}

bool IsNumeric(const QVariant& value) {
  if (!value.isValid() || value.isNull()) return false;
  switch (value.typeId()) {
    case QMetaType::Bool:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Short:
    case QMetaType::Float:
    case QMetaType::Double:
      return true;
    case QMetaType::QString:
      return IsNumeric(value.toString());
    default:
      return false;
  }
}

double ToDouble(const QString& text) {
  const QString number = Normalised(text);
  if (number.isNull()) throw Error(u"'%1' is geen getal."_s.arg(text));
  return number.toDouble();
}

qint32 ToLong(const QString& text) {
  return ToLong(ToDouble(text));
}
qint32 ToLong(double value) {
  return Rounded<qint32>(value);
}
qint16 ToInteger(const QString& text) {
  return ToInteger(ToDouble(text));
}
qint16 ToInteger(double value) {
  return Rounded<qint16>(value);
}

qint32 ToLong(const QVariant& value) {
  if (value.typeId() == QMetaType::Int) return value.toInt();
  if (!IsNumeric(value)) throw Error(u"'%1' is geen getal."_s.arg(value.toString()));
  if (value.typeId() == QMetaType::QString) return ToLong(value.toString());
  if (value.typeId() == QMetaType::Bool) return value.toBool() ? -1 : 0;  // True travels as -1
  return ToLong(value.toDouble());
}

qint16 AddInteger(qint16 left, qint16 right) {
  return Checked<qint16>(qint64{left} + right);
}
qint16 MultiplyInteger(qint16 left, qint16 right) {
  return Checked<qint16>(qint64{left} * right);
}
qint32 SubtractLong(qint32 left, qint32 right) {
  return Checked<qint32>(qint64{left} - right);
}

}  // namespace runtime
