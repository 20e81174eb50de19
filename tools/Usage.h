// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

// What a usage text such as "MAP ZOEKMAP... [--write] [--station N]" allows behind a command's name. Brackets hold what
// may be left out; an option with a word behind it takes a value; "..." stands for any number and ends the plain words.
struct Usage {
  int leastWords = 0;
  int mostWords = 0;  // -1: any number
  QStringList valuedOptions{};
  QStringList flags{};

  static Usage Of(const QString& text);

  bool Allows(qsizetype words) const { return words >= leastWords && (mostWords < 0 || words <= mostWords); }
};
