// SPDX-License-Identifier: MIT
#include "platform/controls/FoldedTexts.h"

namespace controls {
namespace {

// Appends the folded text to an array of 16-bit characters. A surrogate pair folds to a pair, any other character to
// one.
template <class Letters>
void Fold(QStringView text, Letters& letters) {
  for (qsizetype at = 0; at < text.size(); ++at) {
    const char16_t letter = text[at].unicode();
    if (letter < 0x80) {
      letters.push_back(letter >= u'A' && letter <= u'Z' ? static_cast<char16_t>(letter | 0x20) : letter);
    } else if (QChar::isHighSurrogate(letter) && at + 1 < text.size() && text[at + 1].isLowSurrogate()) {
      const char32_t folded = QChar::toCaseFolded(QChar::surrogateToUcs4(letter, text[++at].unicode()));
      letters.push_back(QChar::highSurrogate(folded));
      letters.push_back(QChar::lowSurrogate(folded));
    } else {
      letters.push_back(static_cast<char16_t>(QChar::toCaseFolded(char32_t{letter})));
    }
  }
}

}  // namespace

QString FoldedTexts::Folded(const QString& text) {
  QString folded;
  folded.reserve(text.size());
  Fold(text, folded);
  return folded;
}

void FoldedTexts::Append(const QString& text) {
  Fold(text, letters_);
  ends_.push_back(letters_.size());
}

void FoldedTexts::Clear() {
  letters_.clear();
  ends_.clear();
}

bool FoldedTexts::Holds(int index, const QString& folded) const {
  const auto at = static_cast<std::size_t>(index);
  const std::size_t start = at == 0 ? 0 : ends_[at - 1];
  return QStringView(letters_.data() + start, static_cast<qsizetype>(ends_[at] - start)).contains(folded);
}

}  // namespace controls
