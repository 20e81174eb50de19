// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <random>

// Unusual texts: every plane of Unicode, quotes of all kinds, pipes, line breaks, NUL, unpaired surrogates, SQL
// fragments, table names, and lengths around the size of a field.
class RandomTexts {
 public:
  explicit RandomTexts(unsigned seed) : random_(seed) {}

  QString Next();
  unsigned Number(unsigned below) { return static_cast<unsigned>(random_() % below); }

 private:
  qsizetype Length();
  QString Piece();

  std::mt19937 random_;
};
