#include "platform/dao/TextOrder.h"

#include <QChar>
#include <algorithm>
#include <array>

namespace dao {
namespace {

using FoldTable = std::array<char16_t, 0x10000>;

// Folding by look-up: an ORDER BY of a long list compares hundreds of thousands of times.
const FoldTable& Folds() {
  static const FoldTable kTable = [] {
    FoldTable table{};
    for (std::size_t code = 0; code < table.size(); ++code) {
      const auto unit = static_cast<char16_t>(code);
      table[code] = QChar::isSurrogate(unit) ? unit : QChar(unit).toCaseFolded().unicode();
    }
    return table;
  }();
  return kTable;
}

}  // namespace

int CompareText(std::u16string_view left, std::u16string_view right) noexcept {
  static const FoldTable& folds = Folds();
  const std::size_t common = std::min(left.size(), right.size());
  for (std::size_t i = 0; i < common; ++i) {
    if (left[i] == right[i]) continue;
    const int difference = int{folds[left[i]]} - int{folds[right[i]]};
    if (difference != 0) return difference;
  }
  return left.size() < right.size() ? -1 : int{left.size() > right.size()};
}

}  // namespace dao
