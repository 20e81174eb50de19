// SPDX-License-Identifier: MIT
#include "platform/dao/postgres/ServerValue.h"

#include "platform/jet/values/ExactNumber.h"
#include "platform/jet/values/TextOrder.h"
#include "platform/runtime/Error.h"

#include <QDate>
#include <QString>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

using namespace Qt::StringLiterals;

namespace dao {
namespace {

constexpr std::int64_t kMicrosecondsADay = 86'400'000'000;
constexpr int kServerDigits = 15;  // of a floating-point number
const QDate kDayZero(1899, 12, 30);

std::string Padded(std::int64_t number, std::size_t width) {
  std::string digits = std::to_string(number);
  return digits.size() < width ? std::string(width - digits.size(), '0') + digits : digits;
}

std::string MomentLiteral(double day) {
  const auto moment = static_cast<std::int64_t>(std::llroundl(static_cast<long double>(day) * kMicrosecondsADay));
  std::int64_t days = moment / kMicrosecondsADay;
  std::int64_t within = moment % kMicrosecondsADay;
  if (within < 0) {
    within += kMicrosecondsADay;
    --days;
  }
  const QDate date = kDayZero.addDays(days);
  const std::int64_t seconds = within / 1'000'000;
  return "'" + Padded(date.year(), 4) + '-' + Padded(date.month(), 2) + '-' + Padded(date.day(), 2) + ' ' +
         Padded(seconds / 3600, 2) + ':' + Padded(seconds / 60 % 60, 2) + ':' + Padded(seconds % 60, 2) + '.' +
         Padded(within % 1'000'000, 6) + "'";
}

std::int64_t NumberAt(std::string_view text, std::size_t at, std::size_t length) {
  std::int64_t number = 0;
  std::from_chars(text.data() + at, text.data() + std::min(at + length, text.size()), number);
  return number;
}

// "2025-01-31 23:59:58.5"; the fraction may be shorter or missing.
double DayOf(std::string_view text) {
  const QDate date(static_cast<int>(NumberAt(text, 0, 4)), static_cast<int>(NumberAt(text, 5, 2)),
                   static_cast<int>(NumberAt(text, 8, 2)));
  const std::int64_t seconds = NumberAt(text, 11, 2) * 3600 + NumberAt(text, 14, 2) * 60 + NumberAt(text, 17, 2);
  std::int64_t micros = 0;
  if (text.size() > 20) {
    micros = NumberAt(text, 20, 6);
    for (std::size_t digits = text.size() - 20; digits < 6; ++digits)
      micros *= 10;
  }
  const std::int64_t moment = kDayZero.daysTo(date) * kMicrosecondsADay + seconds * 1'000'000 + micros;
  return static_cast<double>(static_cast<long double>(moment) / kMicrosecondsADay);
}

std::string Hex(std::span<const std::uint8_t> bytes) {
  static const char* const kDigits = "0123456789abcdef";
  std::string text = "'\\x";
  for (const std::uint8_t byte : bytes) {
    text += kDigits[byte >> 4U];
    text += kDigits[byte & 15U];
  }
  return text + '\'';
}

std::uint8_t HexDigit(char c) {
  return static_cast<std::uint8_t>(c <= '9' ? c - '0' : c - 'a' + 10);
}

Bytes BytesOf(std::string_view hex) {
  Bytes bytes;
  for (std::size_t i = 2; i + 1 < hex.size(); i += 2)
    bytes.push_back(static_cast<std::uint8_t>(HexDigit(hex[i]) << 4U | HexDigit(hex[i + 1])));
  return bytes;
}

// Only the significant digits of a double; the other digits of the scale are zeros.
std::string DecimalLiteral(double number, int scale) {
  const double magnitude = std::abs(number);
  const int whole = magnitude < 1 ? 0 : static_cast<int>(std::floor(std::log10(magnitude))) + 1;
  return QByteArray::number(number, 'f', std::clamp(kServerDigits - whole, 0, scale)).toStdString();
}

std::string NumberLiteral(const FieldDef& field, double number) {
  switch (field.type) {
    case FieldType::Date:
      return MomentLiteral(number);
    case FieldType::Currency:
      return DecimalLiteral(number, 4);
    case FieldType::Numeric:
      return DecimalLiteral(number, field.scale);
    default:
      return "'" + QByteArray::number(number, 'g', 17).toStdString() + "'";
  }
}

bool IsDecimal(FieldType type) {
  return type == FieldType::Currency || type == FieldType::Numeric;
}

[[noreturn]] void RefuseText(const TableDef& table, const FieldDef& field) {
  throw runtime::Error(
      u"De tekst van het veld '%1' van de tabel '%2' bevat een teken dat de databaseserver niet kan bewaren."_s.arg(
          field.name, table.name));
}

std::string Utf8Of(const TableDef& table, const FieldDef& field, const std::u16string& text) {
  const QStringView view(text);
  if (view.contains(QChar(0)) || !view.isValidUtf16()) RefuseText(table, field);
  return view.toUtf8().toStdString();
}

// QString::fromUtf8 would drop a leading byte order mark.
std::u16string Utf16Of(std::string_view utf8) {
  static const std::string_view kMark = "\xEF\xBB\xBF";
  std::u16string text;
  for (; utf8.starts_with(kMark); utf8.remove_prefix(kMark.size()))
    text += u'\uFEFF';
  return text + QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size())).toStdU16String();
}

ValueView DecimalView(std::string_view reply, std::u16string& text) {
  text.assign(reply.begin(), reply.end());
  const auto number = jet::ExactOf(text);
  if (!number) return {};
  if (const auto value = jet::DoubleOf(*number)) return *value;
  text = jet::TextOf(*number);
  return std::u16string_view(text);
}

}  // namespace

std::string ColumnTypeOf(const FieldDef& field) {
  switch (field.type) {
    case FieldType::Boolean:
    case FieldType::Byte:
    case FieldType::Integer:
      return "smallint";
    case FieldType::Long:
      return "integer";
    case FieldType::Currency:
      return "numeric(19,4)";
    case FieldType::Single:
      return "real";
    case FieldType::Double:
      return "double precision";
    case FieldType::Date:
      return "timestamp";
    case FieldType::Text:
      return "varchar(" + std::to_string(field.size) + ") COLLATE \"C\"";
    case FieldType::Memo:
      return "text COLLATE \"C\"";
    case FieldType::Binary:
      return "bytea";
    case FieldType::Guid:
      return "uuid";
    case FieldType::Numeric:
      return "numeric(" + std::to_string(field.precision) + ',' + std::to_string(field.scale) + ')';
  }
  return {};
}

std::string LiteralOf(const Connection& connection, const TableDef& table, const FieldDef& field, const Value& value) {
  if (const auto* whole = std::get_if<std::int64_t>(&value)) {
    return field.type == FieldType::Date ? MomentLiteral(static_cast<double>(*whole)) : std::to_string(*whole);
  }
  if (const auto* number = std::get_if<double>(&value)) return NumberLiteral(field, *number);
  if (const auto* text = std::get_if<std::u16string>(&value)) {
    std::string utf8 = Utf8Of(table, field, *text);
    if (IsDecimal(field.type)) std::replace(utf8.begin(), utf8.end(), ',', '.');
    return connection.Literal(utf8);
  }
  if (const auto* bytes = std::get_if<Bytes>(&value)) return Hex(*bytes);
  return "NULL";
}

ValueView ValueOfText(const FieldDef& field, std::string_view reply, std::u16string& text, Bytes& bytes) {
  switch (field.type) {
    case FieldType::Boolean:
    case FieldType::Byte:
    case FieldType::Integer:
    case FieldType::Long:
      return NumberAt(reply, 0, reply.size());
    case FieldType::Currency:
    case FieldType::Numeric:
      return DecimalView(reply, text);
    case FieldType::Single:
    case FieldType::Double: {
      const double number = QByteArray::fromRawData(reply.data(), static_cast<qsizetype>(reply.size())).toDouble();
      return field.type == FieldType::Single ? static_cast<double>(static_cast<float>(number)) : number;
    }
    case FieldType::Date:
      return DayOf(reply);
    case FieldType::Text:
    case FieldType::Memo:
      text = Utf16Of(reply);
      return std::u16string_view(text);
    case FieldType::Guid:
      text = u"{" + QString::fromLatin1(reply.data(), static_cast<qsizetype>(reply.size())).toUpper().toStdU16String() +
             u"}";
      return std::u16string_view(text);
    case FieldType::Binary:
      bytes = BytesOf(reply);
      return std::span<const std::uint8_t>(bytes);
  }
  return {};
}

std::string OrderKeyLiteral(const Value& value) {
  const auto* text = std::get_if<std::u16string>(&value);
  if (text == nullptr) return "NULL";
  const jet::TextOrder& order = jet::TextOrder::Legacy();
  Bytes key;
  if (!order.FirstUnknown(*text)) {
    order.AppendKey(*text, key);
    return Hex(key);
  }
  // A text with a character that the text order does not know is compared character by character, ignoring case.
  const std::string folded = QString::fromStdU16String(*text).toCaseFolded().toStdString();
  key.push_back(0xFF);
  key.insert(key.end(), folded.begin(), folded.end());
  return Hex(key);
}

}  // namespace dao
