// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/values/Bytes.h"
#include "platform/jet/values/SortOrder.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace jet {

// Collation of texts: ignores case and trailing spaces; accents and hyphens only break ties. Used for index keys and
// for comparisons in SQL. Immutable and thread-safe.
class TextOrder {
 public:
  // "General (legacy)": the order of Jet 4 files made for Western Europe, and the default when a file's own order is
  // unknown.
  static const TextOrder& Legacy();
  // The order that a column has; null when its keys cannot be built.
  static const TextOrder* For(SortOrder order);

  // Returns a number below, equal to or above zero. Characters without a weight in this order sort after all others, by
  // code point. Texts whose keys can be built compare as their keys do; longer texts are compared in full.
  int Compare(std::u16string_view a, std::u16string_view b) const;
  // The same for UTF-8. A malformed sequence counts as U+FFFD, byte by byte.
  int Compare(std::string_view a, std::string_view b) const;

  // The first code point without a known weight; nothing when AppendKey accepts the text.
  std::optional<char32_t> FirstUnknown(std::u16string_view text) const;
  // Appends the key bytes of an ascending index, end mark included. Throws Error (UnknownCharacter) for a character
  // without a known weight. Only the first 255 characters count.
  void AppendKey(std::u16string_view text, Bytes& key) const;
  // The same; for such a character it returns false, with nothing appended.
  [[nodiscard]] bool TryAppendKey(std::u16string_view text, Bytes& key) const;

 private:
  enum class Kind : std::uint8_t { Unknown, Nothing, Weight, TwoWeights, Special };

  // A weight of one byte has 00 as its low byte; no two-byte weight does.
  struct Cell {
    std::uint16_t weight = 0;
    std::uint16_t second = 0;
    std::uint8_t accent = 0;
    std::uint8_t special = 0;
    Kind kind = Kind::Unknown;
  };

  static constexpr char32_t kLowCells = 0x460;           // Latin, Greek, Cyrillic
  static constexpr char32_t kPunctuationStart = 0x2000;  // dashes, quotes, currency, trademark
  static constexpr char32_t kPunctuationCells = 0x130;

  TextOrder(const char* latin1, const char* others);
  static Cell ParseCell(std::string_view text);
  void ReadRows(std::string_view cells);
  void ReadPairs(std::string_view pairs);
  Cell* Place(char32_t character);
  Cell Find(char32_t character) const;

  template <typename Text>
  class Walk;
  template <typename View>
  int CompareTexts(View a, View b) const;
  template <typename View>
  int OrderOfLetters(View a, View b, std::size_t at) const;

  std::array<Cell, kLowCells> low_;
  std::array<Cell, kPunctuationCells> punctuation_;
};

}  // namespace jet
