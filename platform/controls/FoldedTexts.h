// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <cstddef>
#include <vector>

namespace controls {

// Texts as a search sees them, without regard to letter case. They lie one behind the other, so that a search through
// many of them does not wait for memory.
class FoldedTexts {
 public:
  // As long as the text, unlike QString::toCaseFolded, and therefore found where Qt::CaseInsensitive finds it.
  static QString Folded(const QString& text);

  int Count() const { return static_cast<int>(ends_.size()); }
  void Append(const QString& text);
  void Clear();
  // Whether the text with this index, from 0, holds a folded one.
  bool Holds(int index, const QString& folded) const;

 private:
  std::vector<char16_t> letters_;
  std::vector<std::size_t> ends_;  // where in letters_ each text ends
};

}  // namespace controls
