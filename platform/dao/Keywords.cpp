// SPDX-License-Identifier: MIT
#include "platform/dao/Keywords.h"

#include <algorithm>
#include <array>

namespace dao {
namespace {

constexpr std::array<QStringView, 35> kKeywords = {
    u"SELECT", u"DISTINCT", u"ALL",   u"FROM", u"WHERE",   u"AND",    u"OR",     u"NOT",   u"IN",
    u"IS",     u"NULL",     u"AS",    u"ON",   u"BETWEEN", u"EXISTS", u"INNER",  u"LEFT",  u"RIGHT",
    u"OUTER",  u"JOIN",     u"GROUP", u"BY",   u"HAVING",  u"ORDER",  u"ASC",    u"DESC",  u"UNION",
    u"VALUES", u"SET",      u"INTO",  u"TRUE", u"FALSE",   u"INSERT", u"UPDATE", u"DELETE"};
constexpr std::array<QStringView, 7> kFunctions = {u"MAX", u"MIN", u"COUNT", u"SUM", u"AVG", u"UCASE", u"LCASE"};

// Letters outside ASCII are in no keyword, not even the few whose capital is an ASCII letter.
bool IsSame(QStringView keyword, QStringView word) {
  const auto isSame = [](QChar capital, QChar letter) {
    return letter == capital ||
           (letter >= u'a' && letter <= u'z' && letter.unicode() - capital.unicode() == u'a' - u'A');
  };
  return keyword.size() == word.size() && std::equal(keyword.begin(), keyword.end(), word.begin(), isSame);
}

template <class Words>
bool Contains(const Words& words, QStringView word) {
  return std::ranges::any_of(words, [&](QStringView known) { return IsSame(known, word); });
}

}  // namespace

bool IsKeyword(QStringView word) {
  return Contains(kKeywords, word);
}

bool IsFunction(QStringView word) {
  return Contains(kFunctions, word);
}

}  // namespace dao
