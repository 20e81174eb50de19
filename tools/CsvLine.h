// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

// Lines of CSV (RFC 4180, UTF-8), put together field by field. NULL is an empty field, an empty text is "", booleans
// are 0 or -1, dates yyyy-mm-dd hh:mm:ss, binary data is hexadecimal, numbers have the fewest digits that tell them
// apart.
class CsvLine {
 public:
  void AddNull() { Separate(); }
  void AddWhole(std::int64_t number);
  void AddNumber(double number);
  // Days since 30-12-1899; a number that is no date of the years 100 to 9999 stays a number.
  void AddDate(double day);
  void AddText(std::string_view utf8);
  void AddText(std::u16string_view text);
  void AddBinary(std::span<const std::uint8_t> bytes);
  void End();

  // The lines since the last Take.
  const std::string& Text() const { return text_; }
  std::string Take();

 private:
  void Separate();
  // What lies behind `start` gets its quotes if it needs them.
  void QuoteFrom(std::size_t start);

  std::string text_;
  bool lineBegins_ = true;
};
