// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <random>

// Texts that nobody types: every plane of Unicode, quotes of all kinds, pipes, line breaks, NUL, halves of surrogate
// pairs, pieces of SQL, the names of tables, and lengths around what a field holds.
class RandomTexts {
 public:
  explicit RandomTexts(unsigned seed) : random_(seed) {}

  QString Next();
  unsigned Number(unsigned below) { return random_() % below; }

 private:
  qsizetype Length();
  QString Piece();

  std::mt19937 random_;
};
