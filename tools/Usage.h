// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

// What a usage text such as "MAP ZOEKMAP... [--write] [--station N]" allows after a command's name. Brackets hold what
// is optional; an option followed by a word takes a value; "..." means any number and ends the plain words.
struct Usage {
  int leastWords = 0;
  int mostWords = 0;  // -1: any number
  QStringList valuedOptions{};
  QStringList flags{};

  static Usage Of(const QString& text);

  bool Allows(qsizetype words) const { return words >= leastWords && (mostWords < 0 || words <= mostWords); }
};
