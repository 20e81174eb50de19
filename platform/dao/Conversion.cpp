// SPDX-License-Identifier: MIT
#include "platform/dao/Conversion.h"

#include "platform/jet/values/ExactNumber.h"
#include "platform/runtime/Dates.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Numbers.h"

#include <QDateTime>
#include <QRegularExpression>
#include <QUuid>

#include <cfloat>
#include <cmath>
#include <limits>
#include <optional>
#include <span>
#include <variant>

using namespace Qt::StringLiterals;

namespace dao {
namespace {

constexpr double kFirstDay = -657434;      // 1-1-100
constexpr double kDayAfterLast = 2958466;  // 1-1-10000
constexpr double kLargestCurrency = 922337203685477.5807;
constexpr double kTenThousand = 10000;
constexpr int kShownDigits = 15;

QString ToQString(std::u16string_view text) {
  return QStringView(text).toString();
}

QString NumberText(double number) {
  return QString::number(number, 'g', kShownDigits).replace(u'.', u',');
}

// The conversion of one value for one field.
class Conversion {
 public:
  Conversion(const QString& table, const FieldDef& field, const ValueView& value)
      : table_(table), field_(field), value_(value) {}

  Value Run() const {
    if (std::holds_alternative<std::monostate>(value_)) return OfNull();
    switch (field_.type) {
      case FieldType::Boolean:
        return std::int64_t{Number() != 0 ? -1 : 0};
      case FieldType::Byte:
        return Whole(0, 255);
      case FieldType::Integer:
        return Whole(std::numeric_limits<qint16>::min(), std::numeric_limits<qint16>::max());
      case FieldType::Long:
        return Whole(std::numeric_limits<qint32>::min(), std::numeric_limits<qint32>::max());
      case FieldType::Currency:
        return Amount();
      case FieldType::Single:
        return static_cast<double>(static_cast<float>(Within(Number(), static_cast<double>(FLT_MAX))));
      case FieldType::Double:
        return Within(Number(), DBL_MAX);
      case FieldType::Numeric:
        return Decimal();
      case FieldType::Date:
        return Day();
      case FieldType::Text:
      case FieldType::Memo:
        return Text();
      case FieldType::Binary:
        return Binary();
      case FieldType::Guid:
        return Guid();
    }
    return {};
  }

 private:
  [[noreturn]] void Refuse(const QString& reason) const {
    QString shown = ShownValue();
    if (shown.size() > 60) shown = shown.left(60) + u"..."_s;
    throw runtime::Error(
        u"De waarde '%1' past niet in het veld '%2' van de tabel '%3': %4."_s.arg(shown, field_.name, table_, reason));
  }

  QString ShownValue() const {
    if (const auto* text = std::get_if<std::u16string_view>(&value_)) return ToQString(*text);
    if (const auto* whole = std::get_if<std::int64_t>(&value_)) return QString::number(*whole);
    if (const auto* number = std::get_if<double>(&value_)) return NumberText(*number);
    return u"binair"_s;
  }

  Value OfNull() const {
    if (field_.type == FieldType::Boolean) return std::int64_t{0};
    if (field_.required && !field_.autoNumber) {
      throw runtime::Error(u"Het veld '%1' van de tabel '%2' moet een waarde hebben."_s.arg(field_.name, table_));
    }
    return {};
  }

  double Number() const {
    if (const auto* whole = std::get_if<std::int64_t>(&value_)) return static_cast<double>(*whole);
    if (const auto* number = std::get_if<double>(&value_)) return *number;
    const auto* text = std::get_if<std::u16string_view>(&value_);
    if (text == nullptr || !runtime::IsNumeric(ToQString(*text))) Refuse(u"het is geen getal"_s);
    return runtime::ToDouble(ToQString(*text));
  }

  double Within(double number, double largest) const {
    if (!(std::abs(number) <= largest)) Refuse(u"het getal is te groot of te klein"_s);
    return number;
  }

  std::int64_t Whole(double least, double most) const {
    const double rounded = std::nearbyint(Number());  // the default rounding mode is half to even
    if (!(rounded >= least && rounded <= most)) Refuse(u"het getal is te groot of te klein"_s);
    return static_cast<std::int64_t>(rounded);
  }

  // The exact decimal number, when the value is a whole number or a numeric text.
  std::optional<jet::Decimal> Exact() const {
    if (const auto* whole = std::get_if<std::int64_t>(&value_)) return jet::ExactOf(*whole);
    const auto* text = std::get_if<std::u16string_view>(&value_);
    return text != nullptr && runtime::IsNumeric(ToQString(*text)) ? jet::ExactOf(*text) : std::nullopt;
  }

  // A floating-point number when that is exact, else the text.
  static Value Held(const jet::Decimal& number) {
    const auto value = DoubleOf(number);
    return value ? Value(*value) : Value(TextOf(number));
  }

  Value Amount() const {
    const auto given = Exact();
    if (!given) return Within(std::nearbyint(Number() * kTenThousand) / kTenThousand, kLargestCurrency);
    const auto amount = CurrencyOf(*given);
    if (!amount) Refuse(u"het getal is te groot of te klein"_s);
    return Held(ExactOf(*amount));
  }

  Value Decimal() const {
    if (const auto given = Exact()) {
      const auto rounded = RoundedTo(*given, field_.scale);
      if (!rounded || DigitsOf(*rounded) > field_.precision) Refuse(u"het getal is te groot of te klein"_s);
      return Held(*rounded);
    }
    const double unit = std::pow(10.0, field_.scale);
    const double rounded = std::nearbyint(Number() * unit) / unit;
    if (!(std::abs(rounded) < std::pow(10.0, field_.precision - field_.scale))) {
      Refuse(u"het getal is te groot of te klein"_s);
    }
    return rounded;
  }

  double Day() const {
    double day = 0;
    if (const auto* text = std::get_if<std::u16string_view>(&value_)) {
      day = DayOfText(ToQString(*text));
    } else {
      day = Number();
    }
    if (!(day > kFirstDay - 1 && day < kDayAfterLast)) Refuse(u"het is geen datum"_s);
    return day;
  }

  double DayOfText(const QString& text) const {
    if (runtime::IsNumeric(text)) return runtime::ToDouble(text);
    static const QRegularExpression kForm(u"^ *([^ ]+)(?: +(\\d{1,2}):(\\d{2})(?::(\\d{2}))?)? *$"_s);
    const QRegularExpressionMatch match = kForm.match(text);
    if (!match.hasMatch()) Refuse(u"het is geen datum"_s);
    const QString datePart = match.captured(1);
    const QDate iso = QDate::fromString(datePart, u"yyyy-MM-dd"_s);
    const std::optional<QDate> date = iso.isValid() ? iso : runtime::ParseDate(datePart);
    const QTime time(match.captured(2).toInt(), match.captured(3).toInt(), match.captured(4).toInt());
    if (!date || !time.isValid()) Refuse(u"het is geen datum"_s);
    return runtime::DayNumber(QDateTime(*date, time));
  }

  std::u16string Text() const {
    if (std::holds_alternative<std::span<const std::uint8_t>>(value_)) Refuse(u"het is geen tekst"_s);
    std::u16string text;
    if (const auto* given = std::get_if<std::u16string_view>(&value_)) {
      text = *given;
    } else {
      text = ShownValue().toStdU16String();
    }
    if (text.empty() && !field_.allowZeroLength) Refuse(u"een lege tekst is niet toegestaan"_s);
    if (field_.type == FieldType::Text && text.size() > static_cast<std::size_t>(field_.size)) {
      Refuse(u"de tekst is te lang (%1 tekens, maximaal %2)"_s.arg(text.size()).arg(field_.size));
    }
    return text;
  }

  Bytes Binary() const {
    const auto* bytes = std::get_if<std::span<const std::uint8_t>>(&value_);
    if (bytes == nullptr) Refuse(u"het zijn geen binaire gegevens"_s);
    if (bytes->size() > static_cast<std::size_t>(field_.size) && field_.size > 0) {
      Refuse(u"de gegevens zijn te lang (%1 bytes, maximaal %2)"_s.arg(bytes->size()).arg(field_.size));
    }
    return {bytes->begin(), bytes->end()};
  }

  std::u16string Guid() const {
    const auto* text = std::get_if<std::u16string_view>(&value_);
    const QUuid guid = text == nullptr ? QUuid() : QUuid::fromString(ToQString(*text));
    if (text == nullptr || (guid.isNull() && ToQString(*text) != QUuid().toString())) Refuse(u"het is geen GUID"_s);
    return guid.toString().toUpper().toStdU16String();
  }

  const QString& table_;
  const FieldDef& field_;
  const ValueView& value_;
};

}  // namespace

Value ConvertToField(const QString& table, const FieldDef& field, const ValueView& value) {
  return Conversion(table, field, value).Run();
}

Value ValueOfVariant(const QVariant& variant) {
  if (!variant.isValid() || variant.isNull()) return {};
  switch (variant.typeId()) {
    case QMetaType::Bool:
      return std::int64_t{variant.toBool() ? -1 : 0};
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
      return std::int64_t{variant.toLongLong()};
    case QMetaType::Double:
    case QMetaType::Float:
      return variant.toDouble();
    case QMetaType::QDate:
    case QMetaType::QDateTime:
      return runtime::DayNumber(variant.toDateTime());
    case QMetaType::QByteArray: {
      const QByteArray bytes = variant.toByteArray();
      return Bytes(bytes.begin(), bytes.end());
    }
    default:
      return variant.toString().toStdU16String();
  }
}

}  // namespace dao
