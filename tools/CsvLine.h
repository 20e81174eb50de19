// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

// Lines of CSV (RFC 4180, UTF-8), built field by field. NULL is an empty field, an empty text is "", booleans are 0 or
// -1, dates yyyy-mm-dd hh:mm:ss, binary data is hexadecimal, numbers have the fewest digits that distinguish them.
class CsvLine {
 public:
  void AddNull() { Separate(); }
  void AddWhole(std::int64_t number);
  void AddNumber(double number);
  // Days since 30-12-1899; a number outside the years 100 to 9999 is written as a number.
  void AddDate(double day);
  void AddText(std::string_view utf8);
  void AddText(std::u16string_view text);
  void AddBinary(std::span<const std::uint8_t> bytes);
  void End();

  // The lines since the last call of Take.
  const std::string& Text() const { return text_; }
  std::string Take();

 private:
  void Separate();
  // Quotes the text from `start` on if needed.
  void QuoteFrom(std::size_t start);

  std::string text_;
  bool lineBegins_ = true;
};
