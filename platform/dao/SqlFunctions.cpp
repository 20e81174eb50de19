// SPDX-License-Identifier: MIT
#include "platform/dao/SqlFunctions.h"

#include "platform/dao/SqlText.h"
#include "platform/dao/Sqlite.h"

#include <algorithm>
#include <array>

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

}  // namespace

void AddSqlFunctions(sqlite3* connection) {
  constexpr int kForm = SQLITE_UTF16 | SQLITE_DETERMINISTIC;
  sqlite3_create_function_v2(connection, "ucase", 1, kForm, nullptr, TextFunction<UCase>, nullptr, nullptr, nullptr);
  sqlite3_create_function_v2(connection, "lcase", 1, kForm, nullptr, TextFunction<LCase>, nullptr, nullptr, nullptr);
}

bool IsDialectFunction(const char* name) {
  static const std::array<const char*, 7> kNames = {"max", "min", "count", "sum", "avg", "ucase", "lcase"};
  return std::any_of(kNames.begin(), kNames.end(),
                     [&](const char* known) { return sqlite3_stricmp(known, name) == 0; });
}

}  // namespace dao
