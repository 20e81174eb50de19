// SPDX-License-Identifier: MIT
#include "platform/dao/SqlFunctions.h"

#include "platform/dao/SqlText.h"
#include "platform/dao/Sqlite.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace dao {
namespace {

template <QString (*Mapping)(const QString&)>
void TextFunction(sqlite3_context* context, int /*count*/, sqlite3_value** values) noexcept {
  try {
    if (sqlite3_value_type(values[0]) == SQLITE_NULL) return sqlite3_result_null(context);
    const QString text = Mapping(TextOf(values[0]));
    SetResult(context, Utf16(text));
  } catch (...) {
    sqlite3_result_error_nomem(context);
  }
}

constexpr int kDigitsOfDouble = 15;

// A Currency or Numeric field with more digits than a double can hold is a text in SQLite.
bool IsLongNumber(const QString& text) {
  const QStringView digits = QStringView(text).mid(text.startsWith(u'-') ? 1 : 0);
  const auto count = std::count_if(digits.begin(), digits.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
  return count > kDigitsOfDouble && digits.size() - count <= 1 && digits.size() - count == digits.count(u'.');
}

QString Shortened(const QString& text) {
  constexpr qsizetype kLongest = 40;
  return text.size() <= kLongest ? text : QString(text.left(kLongest) + u" ..."_s);
}

// operand(value, operator): the value, or an error for a text.
void NumberOnly(sqlite3_context* context, int /*count*/, sqlite3_value** values) noexcept {
  try {
    const int type = sqlite3_value_type(values[0]);
    if (type != SQLITE_TEXT && type != SQLITE_BLOB) return sqlite3_result_value(context, values[0]);
    const QString text = type == SQLITE_TEXT ? TextOf(values[0]) : QString();
    if (IsLongNumber(text)) return sqlite3_result_value(context, values[0]);
    const QByteArray reason =
        u"%1 werkt alleen met getallen, en '%2' is tekst"_s.arg(TextOf(values[1]), Shortened(text)).toUtf8();
    sqlite3_result_error(context, reason.constData(), static_cast<int>(reason.size()));
  } catch (...) {
    sqlite3_result_error_nomem(context);
  }
}

}  // namespace

void AddSqlFunctions(sqlite3* connection) {
  constexpr int kForm = SQLITE_UTF16 | SQLITE_DETERMINISTIC;
  sqlite3_create_function_v2(connection, "ucase", 1, kForm, nullptr, TextFunction<UCase>, nullptr, nullptr, nullptr);
  sqlite3_create_function_v2(connection, "operand", 2, kForm, nullptr, NumberOnly, nullptr, nullptr, nullptr);
  sqlite3_create_function_v2(connection, "lcase", 1, kForm, nullptr, TextFunction<LCase>, nullptr, nullptr, nullptr);
}

bool IsDialectFunction(const char* name) {
  static const std::array<const char*, 8> kNames = {"max", "min", "count", "sum", "avg", "ucase", "lcase", "operand"};
  return std::any_of(kNames.begin(), kNames.end(),
                     [&](const char* known) { return sqlite3_stricmp(known, name) == 0; });
}

}  // namespace dao
