// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/Value.h"

#include <QString>

#include <sqlite3.h>

#include <memory>
#include <string_view>

namespace dao {

struct CloseSqlite {
  void operator()(sqlite3* connection) const noexcept { sqlite3_close(connection); }
  void operator()(sqlite3_stmt* statement) const noexcept { sqlite3_finalize(statement); }
};
using SqliteConnection = std::unique_ptr<sqlite3, CloseSqlite>;
using SqliteStatement = std::unique_ptr<sqlite3_stmt, CloseSqlite>;

// Configures SQLite for this process, once: one thread at a time per connection, no memory statistics.
void SetUpSqlite();

// The collation that orders texts as database files do (jet::TextOrder).
constexpr const char* kTextOrderName = "jet";
void AddTextOrder(sqlite3* connection);

// Values from and to SQLite; texts are not re-encoded when the database is UTF-16.
ValueView ValueOf(sqlite3_value* value);
void Bind(sqlite3_stmt* statement, int parameter, const ValueView& value);
void SetResult(sqlite3_context* context, const ValueView& value);
QString TextOf(sqlite3_value* value);
inline std::u16string_view Utf16(const QString& text) {
  return {QStringView(text).utf16(), static_cast<std::size_t>(text.size())};
}

// The compiled statement; null with the reason in sqlite3_errmsg.
SqliteStatement Compile(sqlite3* connection, const QString& sql);

}  // namespace dao
