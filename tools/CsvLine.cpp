// SPDX-License-Identifier: MIT
#include "tools/CsvLine.h"

#include "platform/jet/values/Utf8.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cmath>

namespace {

constexpr double kMaxFixed = 1e15;  // above this, exponent notation is shorter
constexpr double kLeastFixed = 1e-5;
constexpr std::int64_t kMillisecondsADay = 86'400'000;
constexpr double kFirstDay = -657434;  // 1-1-100
constexpr double kLastDay = 2958465;   // 31-12-9999

void AppendPadded(std::string& text, unsigned number, int width) {
  std::array<char, 10> digits;
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
  text.append(static_cast<std::size_t>(std::max<std::ptrdiff_t>(0, width - (end - digits.data()))), '0');
  text.append(digits.data(), end);
}

template <typename... Format>
void AppendNumber(std::string& text, Format... format) {
  std::array<char, 64> digits;
  text.append(digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), format...).ptr);
}

}  // namespace

void CsvLine::Separate() {
  if (!lineBegins_) text_ += ',';
  lineBegins_ = false;
}

void CsvLine::AddWhole(std::int64_t number) {
  Separate();
  AppendNumber(text_, number);
}

void CsvLine::AddNumber(double number) {
  Separate();
  const double magnitude = std::abs(number);
  const bool fixed = magnitude == 0 || (magnitude >= kLeastFixed && magnitude < kMaxFixed);
  AppendNumber(text_, number, fixed ? std::chars_format::fixed : std::chars_format::scientific);
}

// The fraction counts forwards also on days before day 0.
void CsvLine::AddDate(double day) {
  if (!(day > kFirstDay - 1 && day < kLastDay + 1)) return AddNumber(day);
  Separate();
  const double whole = std::trunc(day);
  const std::int64_t ms = std::llround(std::abs(day - whole) * static_cast<double>(kMillisecondsADay));
  const std::chrono::sys_days zero = std::chrono::year(1899) / 12 / 30;
  const std::chrono::year_month_day date =
      zero + std::chrono::days(static_cast<int>(whole) + static_cast<int>(ms / kMillisecondsADay));
  const auto seconds = static_cast<unsigned>(ms % kMillisecondsADay / 1000);
  AppendPadded(text_, static_cast<unsigned>(static_cast<int>(date.year())), 4);
  const std::array<std::pair<char, unsigned>, 5> parts = {{{'-', static_cast<unsigned>(date.month())},
                                                           {'-', static_cast<unsigned>(date.day())},
                                                           {' ', seconds / 3600},
                                                           {':', seconds / 60 % 60},
                                                           {':', seconds % 60}}};
  for (const auto& [mark, number] : parts) {
    text_ += mark;
    AppendPadded(text_, number, 2);
  }
}

void CsvLine::AddText(std::string_view utf8) {
  Separate();
  const std::size_t start = text_.size();
  text_ += utf8;
  QuoteFrom(start);
}

void CsvLine::AddText(std::u16string_view text) {
  Separate();
  const std::size_t start = text_.size();
  jet::AppendUtf8(text_, text);
  QuoteFrom(start);
}

void CsvLine::QuoteFrom(std::size_t start) {
  if (start < text_.size() && text_.find_first_of("\",\r\n", start) == std::string::npos) return;
  for (std::size_t at = start; (at = text_.find('"', at)) != std::string::npos; at += 2)
    text_.insert(at, 1, '"');
  text_.insert(start, 1, '"');
  text_ += '"';
}

void CsvLine::AddBinary(std::span<const std::uint8_t> bytes) {
  constexpr char kDigits[] = "0123456789abcdef";
  Separate();
  for (const std::uint8_t byte : bytes) {
    text_ += kDigits[byte >> 4];
    text_ += kDigits[byte & 15];
  }
}

void CsvLine::End() {
  text_ += "\r\n";
  lineBegins_ = true;
}

std::string CsvLine::Take() {
  std::string taken;
  taken.swap(text_);
  return taken;
}
