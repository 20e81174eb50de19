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

// Sets the library up for this process, once: connections are used by one thread at a time, and nothing counts memory.
void SetUpSqlite();

// The order of texts in database files (jet::TextOrder) as a collation of a connection: its name there.
constexpr const char* kTextOrderName = "jet";
void AddTextOrder(sqlite3* connection);

// Values in and out, without a change of encoding where the database is UTF-16.
ValueView ValueOf(sqlite3_value* value);
void Bind(sqlite3_stmt* statement, int parameter, const ValueView& value);
void SetResult(sqlite3_context* context, const ValueView& value);
QString TextOf(sqlite3_value* value);
inline std::u16string_view Utf16(const QString& text) {
  return {QStringView(text).utf16(), static_cast<std::size_t>(text.size())};
}

// The compiled statement, or nothing: sqlite3_errmsg then tells why.
SqliteStatement Compile(sqlite3* connection, const QString& sql);

}  // namespace dao
