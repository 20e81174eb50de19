// SPDX-License-Identifier: MIT
#include "platform/dao/DefaultValue.h"

#include <QDateTime>

#include <limits>

using namespace Qt::StringLiterals;

namespace dao {
namespace {

const QString kMoment = u"M/d/yyyy H:mm:ss"_s;  // the notation of expressions in every locale
const QString kDay = u"M/d/yyyy"_s;

bool IsBetween(const QString& text, QChar mark) {
  return text.size() >= 2 && text.startsWith(mark) && text.endsWith(mark);
}

// Nothing when the text contains a single quote mark that is not doubled: then it is an expression of several texts.
std::optional<QVariant> TextIn(const QString& quoted) {
  QString text = quoted.mid(1, quoted.size() - 2);
  const QString without = QString(text).remove(u"\"\""_s);
  if (without.contains(u'"')) return std::nullopt;
  return QVariant(text.replace(u"\"\""_s, u"\""_s));
}

std::optional<QVariant> DateIn(const QString& text) {
  const QDateTime moment = QDateTime::fromString(text, kMoment);
  if (moment.isValid()) return QVariant(moment);
  const QDate day = QDate::fromString(text, kDay);
  if (day.isValid()) return QVariant(day.startOfDay());
  return std::nullopt;
}

std::optional<QVariant> NumberIn(const QString& text) {
  bool isNumber = false;
  const int whole = text.toInt(&isNumber);
  if (isNumber) return QVariant(whole);
  const double number = text.toDouble(&isNumber);
  if (isNumber) return QVariant(number);
  return std::nullopt;
}

}  // namespace

std::optional<QVariant> ConstantOf(const QString& expression) {
  QString text = expression.trimmed();
  if (text.startsWith(u'=')) text = text.mid(1).trimmed();
  const QString word = text.toLower();
  if (word.isEmpty() || word == u"null"_s) return QVariant();
  if (word == u"true"_s || word == u"yes"_s || word == u"on"_s) return QVariant(true);
  if (word == u"false"_s || word == u"no"_s || word == u"off"_s) return QVariant(false);
  if (IsBetween(text, u'"')) return TextIn(text);
  if (IsBetween(text, u'#')) return DateIn(text.mid(1, text.size() - 2).trimmed());
  return NumberIn(text);
}

QString ExpressionOf(const QVariant& value) {
  switch (value.typeId()) {
    case QMetaType::UnknownType:
      return {};
    case QMetaType::Bool:
      return value.toBool() ? u"True"_s : u"False"_s;
    case QMetaType::Int:
    case QMetaType::LongLong:
      return QString::number(value.toLongLong());
    case QMetaType::Double:
      return QString::number(value.toDouble(), 'g', std::numeric_limits<double>::max_digits10);
    case QMetaType::QDate:
    case QMetaType::QDateTime:
      return u'#' + value.toDateTime().toString(kMoment) + u'#';
    default:
      return u'"' + value.toString().replace(u"\""_s, u"\"\""_s) + u'"';
  }
}

}  // namespace dao
