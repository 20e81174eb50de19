// SPDX-License-Identifier: MIT
#include "platform/jet/values/TextOrder.h"

#include "platform/jet/values/Error.h"
#include "platform/jet/values/TextOrderCells.h"
#include "platform/jet/values/Utf8.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <string>
#include <type_traits>
#include <utility>

namespace jet {
namespace {

constexpr std::size_t kCharactersInKey = 255;
constexpr std::uint8_t kNoAccent = 0x02;
constexpr std::uint8_t kSectionEnd = 0x01;
constexpr std::uint8_t kKeyEnd = 0x00;
constexpr std::uint32_t kUnknownWeight = 0x10000;  // above every known weight

unsigned Hex(std::string_view digits) {
  unsigned value = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
  return value;
}

std::uint16_t WeightOf(std::string_view digits) {
  return static_cast<std::uint16_t>(digits.size() == 2 ? Hex(digits) << 8 : Hex(digits));
}

template <typename Use>
void ForEachWord(std::string_view text, Use use) {
  while (!text.empty()) {
    const std::size_t end = std::min(text.find(' '), text.size());
    if (end > 0) use(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
}

// Returns the character at `at` and advances `at` past it.
char32_t NextCharacter(std::u16string_view text, std::size_t& at) {
  const char32_t unit = text[at++];
  if (!IsHighSurrogate(unit) || at == text.size() || !IsLowSurrogate(text[at])) return unit;
  return 0x10000 + ((unit - 0xD800) << 10) + (static_cast<char32_t>(text[at++]) - 0xDC00);
}

char32_t NextCharacter(std::string_view text, std::size_t& at) {
  const auto byte = [&](std::size_t place) { return static_cast<std::uint8_t>(text[place]); };
  const std::uint8_t lead = byte(at++);
  if (lead < 0x80) return lead;
  const std::size_t more = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : 1;
  if (lead < 0xC2 || lead > 0xF4 || text.size() - at < more) return 0xFFFD;
  char32_t character = lead & (0x3F >> more);
  for (std::size_t i = 0; i < more; ++i) {
    if ((byte(at + i) & 0xC0) != 0x80) return 0xFFFD;
    character = character << 6 | (byte(at + i) & 0x3F);
  }
  at += more;
  return character;
}

// Where a comparison may begin: after the common prefix, at the start of a character.
template <typename View>
std::size_t SharedStart(View a, View b) {
  constexpr std::size_t kTogether = sizeof(std::uint64_t) / sizeof(typename View::value_type);
  const std::size_t shorter = std::min(a.size(), b.size());
  std::size_t shared = 0;
  while (shared + kTogether <= shorter && std::memcmp(&a[shared], &b[shared], sizeof(std::uint64_t)) == 0)
    shared += kTogether;
  while (shared < shorter && a[shared] == b[shared])
    ++shared;
  if constexpr (std::is_same_v<View, std::u16string_view>) {
    if (shared > 0 && IsHighSurrogate(a[shared - 1])) --shared;
  } else {
    while (shared > 0 && static_cast<std::uint8_t>(a[shared - 1]) >= 0x80)
      --shared;
  }
  return shared;
}

template <typename View>
View WithoutTrailingSpaces(View text) {
  while (!text.empty() && text.back() == ' ')
    text.remove_suffix(1);
  return text;
}

template <typename Number>
int Order(Number a, Number b) {
  return a < b ? -1 : static_cast<int>(b < a);
}

}  // namespace

// Iterates over the weights, or over the specials, of a text.
template <typename View>
class TextOrder::Walk {
 public:
  Walk(const TextOrder& order, View text, std::size_t start) : order_(order), text_(text), at_(start) {}

  // Zero at the end.
  std::uint32_t NextWeight(std::uint8_t& accent) {
    accent = kNoAccent;
    if (second_ != 0) return std::exchange(second_, 0);
    while (at_ < text_.size()) {
      const char32_t character = NextCharacter(text_, at_);
      const Cell cell = order_.Find(character);
      if (cell.kind == Kind::Unknown) return kUnknownWeight + character;
      if (cell.kind == Kind::Special) sawSpecial_ = true;
      if (cell.weight == 0) continue;
      accent = cell.accent;
      second_ = cell.second;
      return cell.weight;
    }
    return 0;
  }

  // Position (counted in weights) and value of the next special as one number; zero at the end.
  std::uint64_t NextSpecial() {
    while (at_ < text_.size()) {
      const Cell cell = order_.Find(NextCharacter(text_, at_));
      if (cell.kind == Kind::Special) return (weights_ + 1) << 8 | cell.special;
      weights_ += cell.kind == Kind::TwoWeights ? 2 : cell.kind == Kind::Nothing ? 0 : 1;
    }
    return 0;
  }

  bool SawSpecial() const { return sawSpecial_; }

 private:
  const TextOrder& order_;
  View text_;
  std::size_t at_;
  std::uint32_t second_ = 0;
  std::uint64_t weights_ = 0;
  bool sawSpecial_ = false;
};

TextOrder::TextOrder(const char* latin1, const char* others) {
  ReadRows(latin1);
  ReadPairs(others);
}

const TextOrder& TextOrder::Legacy() {
  static const TextOrder legacy(kLegacyLatin1, kLegacyOthers);
  return legacy;
}

const TextOrder* TextOrder::For(SortOrder order) {
  static const TextOrder general(kGeneralLatin1, "");
  if (order == SortOrder{0x0409, 0}) return &Legacy();
  if (order == SortOrder{0x0409, 1}) return &general;
  return nullptr;
}

TextOrder::Cell TextOrder::ParseCell(std::string_view text) {
  Cell cell;
  if (text == "?") return cell;
  cell.kind = Kind::Nothing;
  if (text == ".") return cell;
  if (text[0] == 'u') {
    cell.kind = Kind::Special;
    cell.special = static_cast<std::uint8_t>(Hex(text.substr(1)));
    return cell;
  }
  const std::size_t mark = text.find_first_of("+&");
  const bool isDouble = mark != text.npos && text[mark] == '&';
  cell.kind = isDouble ? Kind::TwoWeights : Kind::Weight;
  cell.weight = WeightOf(text.substr(0, mark));
  cell.accent = kNoAccent;
  if (isDouble) cell.second = WeightOf(text.substr(mark + 1));
  if (mark != text.npos && !isDouble) cell.accent = static_cast<std::uint8_t>(Hex(text.substr(mark + 1)));
  return cell;
}

void TextOrder::ReadRows(std::string_view cells) {
  std::size_t character = 0;
  ForEachWord(cells, [&](std::string_view cell) { low_[character++] = ParseCell(cell); });
}

void TextOrder::ReadPairs(std::string_view pairs) {
  ForEachWord(pairs, [&](std::string_view pair) {
    const std::size_t equals = pair.find('=');
    *Place(Hex(pair.substr(0, equals))) = ParseCell(pair.substr(equals + 1));
  });
}

TextOrder::Cell* TextOrder::Place(char32_t character) {
  if (character < kLowCells) return &low_[character];
  return &punctuation_.at(character - kPunctuationStart);
}

TextOrder::Cell TextOrder::Find(char32_t character) const {
  if (character < kLowCells) return low_[character];
  if (character >= kPunctuationStart && character < kPunctuationStart + kPunctuationCells)
    return punctuation_[character - kPunctuationStart];
  return {};
}

// The order when the texts first differ in two letters of different weights, as most do; otherwise 0.
template <typename View>
int TextOrder::OrderOfLetters(View a, View b, std::size_t at) const {
  constexpr unsigned kSingleUnits = std::is_same_v<View, std::u16string_view> ? kLowCells : 0x80;
  if (at >= a.size() || at >= b.size()) return 0;
  const auto left = static_cast<std::make_unsigned_t<typename View::value_type>>(a[at]);
  const auto right = static_cast<std::make_unsigned_t<typename View::value_type>>(b[at]);
  if (left >= kSingleUnits || right >= kSingleUnits) return 0;
  const std::uint16_t leftWeight = low_[left].weight;
  const std::uint16_t rightWeight = low_[right].weight;
  return leftWeight == 0 || rightWeight == 0 ? 0 : Order(leftWeight, rightWeight);
}

template <typename View>
int TextOrder::CompareTexts(View a, View b) const {
  a = WithoutTrailingSpaces(a);
  b = WithoutTrailingSpaces(b);
  const std::size_t start = SharedStart(a, b);
  if (const int order = OrderOfLetters(a, b, start); order != 0) return order;
  Walk<View> walkA(*this, a, start);
  Walk<View> walkB(*this, b, start);
  int byAccent = 0;
  for (;;) {
    std::uint8_t accentA = 0;
    std::uint8_t accentB = 0;
    const std::uint32_t weightA = walkA.NextWeight(accentA);
    const std::uint32_t weightB = walkB.NextWeight(accentB);
    if (weightA != weightB) return Order(weightA, weightB);
    if (weightA == 0) break;
    if (byAccent == 0) byAccent = Order(accentA, accentB);
  }
  if (byAccent != 0 || !(walkA.SawSpecial() || walkB.SawSpecial())) return byAccent;
  Walk<View> specialsA(*this, a, start);
  Walk<View> specialsB(*this, b, start);
  for (;;) {
    const std::uint64_t specialA = specialsA.NextSpecial();
    const std::uint64_t specialB = specialsB.NextSpecial();
    if (specialA != specialB) return Order(specialA, specialB);
    if (specialA == 0) return 0;
  }
}

int TextOrder::Compare(std::u16string_view a, std::u16string_view b) const {
  return CompareTexts(a, b);
}
int TextOrder::Compare(std::string_view a, std::string_view b) const {
  return CompareTexts(a, b);
}

std::optional<char32_t> TextOrder::FirstUnknown(std::u16string_view text) const {
  text = text.substr(0, kCharactersInKey);
  for (std::size_t at = 0; at < text.size();) {
    const char32_t character = NextCharacter(text, at);
    if (Find(character).kind == Kind::Unknown) return character;
  }
  return std::nullopt;
}

void TextOrder::AppendKey(std::u16string_view text, Bytes& key) const {
  if (TryAppendKey(text, key)) return;
  char name[16];
  std::snprintf(name, sizeof name, "U+%04X", static_cast<unsigned>(*FirstUnknown(text)));
  throw Error(ErrorCode::UnknownCharacter,
              std::string("De sorteervolgorde van het teken ") + name + " is niet bekend.");
}

// In one pass: most texts have weights of one byte, no accents and no specials. A unit of a surrogate pair is as
// unknown as its character.
bool TextOrder::TryAppendKey(std::u16string_view text, Bytes& key) const {
  constexpr std::size_t kMaxWeightBytes = 4;  // of the weights of one character
  const std::size_t before = key.size();
  text = WithoutTrailingSpaces(text.substr(0, kCharactersInKey));
  key.resize(before + kMaxWeightBytes * text.size());
  std::uint8_t* end = key.data() + before;
  std::size_t weights = 0;
  Bytes accents;  // of the weights up to the last accent
  Bytes specials;
  const auto addWeight = [&](std::uint16_t weight, std::uint8_t accent) {
    *end++ = static_cast<std::uint8_t>(weight >> 8);
    if ((weight & 0xFF) != 0) *end++ = static_cast<std::uint8_t>(weight);
    if (accent != kNoAccent) {
      accents.resize(weights, kNoAccent);
      accents.push_back(accent);
    }
    ++weights;
  };
  for (const char16_t character : text) {
    const Cell cell = Find(character);
    if (cell.kind == Kind::Unknown) {
      key.resize(before);
      return false;
    }
    if (cell.weight != 0) addWeight(cell.weight, cell.accent);
    if (cell.second != 0) addWeight(cell.second, kNoAccent);
    if (cell.kind != Kind::Special) continue;
    const std::size_t place = 0x8000 | (7 + 4 * weights);
    specials.insert(specials.end(),
                    {static_cast<std::uint8_t>(place >> 8), static_cast<std::uint8_t>(place), 0x06, cell.special});
  }
  key.resize(static_cast<std::size_t>(end - key.data()));
  key.push_back(kSectionEnd);
  while (!accents.empty() && accents.back() <= kNoAccent)
    accents.pop_back();
  key.insert(key.end(), accents.begin(), accents.end());
  if (!specials.empty()) {
    key.insert(key.end(), 3, kSectionEnd);
    key.insert(key.end(), specials.begin(), specials.end());
  }
  key.push_back(kKeyEnd);
  return true;
}

}  // namespace jet
