// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <cstddef>
#include <vector>

namespace controls {

// Case-folded texts for searching. They are contiguous in memory, so that a search through many of them is fast.
class FoldedTexts {
 public:
  // Folds letter case. The result has the text's length, unlike QString::toCaseFolded, so a search finds the same as
  // one with Qt::CaseInsensitive.
  static QString Folded(const QString& text);

  int Count() const { return static_cast<int>(ends_.size()); }
  void Append(const QString& text);
  void Clear();
  // Whether the text with this index (from 0) contains `folded`, which must be folded.
  bool Holds(int index, const QString& folded) const;

 private:
  std::vector<char16_t> letters_;
  std::vector<std::size_t> ends_;  // end of each text in letters_
};

}  // namespace controls
