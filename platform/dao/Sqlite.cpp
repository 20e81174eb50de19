// SPDX-License-Identifier: MIT
#include "platform/dao/Sqlite.h"

#include "platform/jet/values/TextOrder.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <span>
#include <variant>

namespace dao {
namespace {

// A UTF-16 text at any address: SQLite's sorter passes odd ones too, which are copied.
class ComparedText {
 public:
  ComparedText(const void* text, int bytes) : size_(static_cast<std::size_t>(bytes) / sizeof(char16_t)) {
    if (reinterpret_cast<std::uintptr_t>(text) % alignof(char16_t) == 0) {
      text_ = static_cast<const char16_t*>(text);
      return;
    }
    if (size_ > shortCopy_.size()) longCopy_.resize(size_);
    char16_t* copy = size_ > shortCopy_.size() ? longCopy_.data() : shortCopy_.data();
    std::memcpy(copy, text, size_ * sizeof(char16_t));
    text_ = copy;
  }
  ComparedText(const ComparedText&) = delete;
  ComparedText& operator=(const ComparedText&) = delete;

  std::u16string_view View() const { return {text_, size_}; }

 private:
  const char16_t* text_ = nullptr;
  std::size_t size_;
  std::array<char16_t, 256> shortCopy_;  // enough for a Text field
  std::u16string longCopy_;
};

int CompareCallback(void* /*unused*/, int leftBytes, const void* left, int rightBytes, const void* right) {
  // Fast path: sorting compares equal texts often.
  if (leftBytes == rightBytes && std::memcmp(left, right, static_cast<std::size_t>(leftBytes)) == 0) return 0;
  return jet::TextOrder::Legacy().Compare(ComparedText(left, leftBytes).View(), ComparedText(right, rightBytes).View());
}

// A text for SQLite, which drops a leading byte order mark, or swaps all bytes after a reversed one. Such a text gets
// an extra mark, which SQLite then drops.
class EngineText {
 public:
  explicit EngineText(std::u16string_view text) : text_(text) {
    if (text.empty() || (text.front() != kMark && text.front() != kSwappedMark)) return;
    marked_ = kMark;
    marked_ += text;
    text_ = marked_;
  }
  EngineText(const EngineText&) = delete;
  EngineText& operator=(const EngineText&) = delete;

  const char16_t* Data() const { return text_.empty() ? u"" : text_.data(); }
  int Size() const { return static_cast<int>(text_.size() * sizeof(char16_t)); }  // bytes

 private:
  static constexpr char16_t kMark = 0xFEFF;
  static constexpr char16_t kSwappedMark = 0xFFFE;

  std::u16string marked_;
  std::u16string_view text_;
};

}  // namespace

void SetUpSqlite() {
  static const bool kDone = [] {
    sqlite3_config(SQLITE_CONFIG_MULTITHREAD);
    sqlite3_config(SQLITE_CONFIG_MEMSTATUS, 0);
    return sqlite3_initialize() == SQLITE_OK;
  }();
  static_cast<void>(kDone);
}

void AddTextOrder(sqlite3* connection) {
  // Not SQLITE_UTF16_ALIGNED: SQLite would then allocate and copy both texts for every comparison.
  sqlite3_create_collation_v2(connection, kTextOrderName, SQLITE_UTF16, nullptr, CompareCallback, nullptr);
}

ValueView ValueOf(sqlite3_value* value) {
  switch (sqlite3_value_type(value)) {
    case SQLITE_INTEGER:
      return std::int64_t{sqlite3_value_int64(value)};
    case SQLITE_FLOAT:
      return sqlite3_value_double(value);
    case SQLITE_TEXT: {
      const auto* text = static_cast<const char16_t*>(sqlite3_value_text16(value));
      return std::u16string_view(text, static_cast<std::size_t>(sqlite3_value_bytes16(value)) / sizeof(char16_t));
    }
    case SQLITE_BLOB: {
      const auto* bytes = static_cast<const std::uint8_t*>(sqlite3_value_blob(value));
      return std::span<const std::uint8_t>(bytes, static_cast<std::size_t>(sqlite3_value_bytes(value)));
    }
    default:
      return {};
  }
}

void Bind(sqlite3_stmt* statement, int parameter, const ValueView& value) {
  if (const auto* whole = std::get_if<std::int64_t>(&value)) {
    sqlite3_bind_int64(statement, parameter, *whole);
  } else if (const auto* number = std::get_if<double>(&value)) {
    sqlite3_bind_double(statement, parameter, *number);
  } else if (const auto* text = std::get_if<std::u16string_view>(&value)) {
    const EngineText given(*text);
    sqlite3_bind_text16(statement, parameter, given.Data(), given.Size(), SQLITE_TRANSIENT);
  } else if (const auto* bytes = std::get_if<std::span<const std::uint8_t>>(&value)) {
    if (bytes->empty()) {
      sqlite3_bind_zeroblob(statement, parameter, 0);
    } else {
      sqlite3_bind_blob(statement, parameter, bytes->data(), static_cast<int>(bytes->size()), SQLITE_TRANSIENT);
    }
  } else {
    sqlite3_bind_null(statement, parameter);
  }
}

void SetResult(sqlite3_context* context, const ValueView& value) {
  if (const auto* whole = std::get_if<std::int64_t>(&value)) {
    sqlite3_result_int64(context, *whole);
  } else if (const auto* number = std::get_if<double>(&value)) {
    sqlite3_result_double(context, *number);
  } else if (const auto* text = std::get_if<std::u16string_view>(&value)) {
    const EngineText given(*text);
    sqlite3_result_text16(context, given.Data(), given.Size(), SQLITE_TRANSIENT);
  } else if (const auto* bytes = std::get_if<std::span<const std::uint8_t>>(&value)) {
    if (bytes->empty()) {
      sqlite3_result_zeroblob(context, 0);
    } else {
      sqlite3_result_blob(context, bytes->data(), static_cast<int>(bytes->size()), SQLITE_TRANSIENT);
    }
  } else {
    sqlite3_result_null(context);
  }
}

QString TextOf(sqlite3_value* value) {
  const auto* text = static_cast<const QChar*>(sqlite3_value_text16(value));
  return QString(text, static_cast<qsizetype>(sqlite3_value_bytes16(value)) / qsizetype{sizeof(QChar)});
}

SqliteStatement Compile(sqlite3* connection, const QString& sql) {
  sqlite3_stmt* statement = nullptr;
  sqlite3_prepare16_v2(connection, sql.utf16(), -1, &statement, nullptr);
  return SqliteStatement(statement);
}

}  // namespace dao
