// SPDX-License-Identifier: MIT
#include "platform/dao/Tokens.h"

#include "tests/platform/dao/Scratch.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using dao::TokenKind;

namespace {

// The tokens as "kind:text", e.g. "w:SELECT".
QStringList Tokenised(const QString& sql) {
  QStringList shown;
  for (const dao::Token& token : dao::Tokenise(sql)) {
    static const QString kLetters = u"wbnts$"_s;
    shown += QString(kLetters[static_cast<int>(token.kind)]) + u':' + token.Value();
  }
  return shown;
}

QString TokenError(const QString& sql) {
  return scratch::ErrorOf([&] { dao::Tokenise(sql); });
}

TEST(Tokens, EachKindIsRecognised) {
  EXPECT_EQ(Tokenised(u"SELECT [mijn veld], 3.5 FROM t_1 WHERE a<>\"x\""_s),
            (QStringList{u"w:SELECT"_s, u"b:mijn veld"_s, u"s:,"_s, u"n:3.5"_s, u"w:FROM"_s, u"w:t_1"_s, u"w:WHERE"_s,
                         u"w:a"_s, u"s:<>"_s, u"t:x"_s, u"$:"_s}));
}

TEST(Tokens, BlanksSeparateAndAreDropped) {
  const QStringList expected = {u"w:a"_s, u"w:b"_s, u"$:"_s};
  for (const QString& sql : {u"a b"_s, u"  a\tb\r\n"_s, u"a\nb;"_s, u"a b ; \n"_s})
    EXPECT_EQ(Tokenised(sql), expected) << qPrintable(sql);
  EXPECT_EQ(Tokenised(QString()), QStringList{u"$:"_s});
  EXPECT_EQ(Tokenised(u" ; "_s), QStringList{u"$:"_s});
}

TEST(Tokens, SymbolsAreAsLongAsPossible) {
  EXPECT_EQ(Tokenised(u"a<=b>=c<d>e=f"_s).filter(u"s:"_s),
            (QStringList{u"s:<="_s, u"s:>="_s, u"s:<"_s, u"s:>"_s, u"s:="_s}));
  EXPECT_EQ(Tokenised(u"(a),b.*+c-d*e/f"_s).filter(u"s:"_s).join(QString()), u"s:(s:)s:,s:.s:*s:+s:-s:*s:/"_s);
}

TEST(Tokens, NumbersHaveEveryNotation) {
  for (const QString& number : {u"0"_s, u"12"_s, u"1.5"_s, u".5"_s, u"5."_s, u"1e5"_s, u"1E-5"_s, u"2.5e+10"_s})
    EXPECT_EQ(Tokenised(number), (QStringList{u"n:"_s + number, u"$:"_s})) << qPrintable(number);
}

TEST(Tokens, MalformedNumbersAreErrors) {
  for (const QString& number : {u"1e"_s, u"1e+"_s, u"1x"_s, u"1.2.3"_s, u"1e5e5"_s, u"12_"_s, u".5.5"_s})
    EXPECT_TRUE(TokenError(number).contains(u"is geen getal"_s)) << qPrintable(number);
}

TEST(Tokens, LiteralsKeepEveryCharacterBetweenTheirQuotes) {
  EXPECT_EQ(Tokenised(u"\"it's\""_s).first(), u"t:it's"_s);
  EXPECT_EQ(Tokenised(u"'say \"x\"'"_s).first(), u"t:say \"x\""_s);
  EXPECT_EQ(Tokenised(u"\"a\"\"b\""_s).first(), u"t:a\"b"_s);
  EXPECT_EQ(Tokenised(u"'''a'''"_s).first(), u"t:'a'"_s);
  EXPECT_EQ(Tokenised(u"\"\""_s).first(), u"t:"_s);
  EXPECT_EQ(Tokenised(u"\"-- /* ; [ \u20AC\n\""_s).first(), u"t:-- /* ; [ \u20AC\n"_s);
}

TEST(Tokens, OpenQuotesAndBracketsAreErrorsWithTheStatement) {
  for (const QString& sql : {u"a \"b"_s, u"a 'b"_s, u"a 'b''"_s, u"a [b"_s, u"a []"_s, u"\""_s}) {
    const QString error = TokenError(sql);
    EXPECT_TRUE(error.startsWith(u"Syntaxisfout"_s)) << qPrintable(sql);
    EXPECT_TRUE(error.endsWith(u'\n' + sql)) << qPrintable(error);
  }
}

TEST(Tokens, CommentsAndOtherCharactersAreErrors) {
  EXPECT_TRUE(TokenError(u"a --b"_s).contains(u"commentaar"_s));
  EXPECT_TRUE(TokenError(u"a /*b*/"_s).contains(u"commentaar"_s));
  for (const QString& mark : {u"?"_s, u"@"_s, u":"_s, u"`"_s, u"!"_s, u"&"_s, u"%"_s, u"|"_s, u"#"_s, u"{"_s, u"\\"_s})
    EXPECT_TRUE(TokenError(u"a "_s + mark).contains(u"het teken '%1'"_s.arg(mark))) << qPrintable(mark);
}

TEST(Tokens, TextAfterTheSemicolonIsAnError) {
  EXPECT_TRUE(TokenError(u"a; b"_s).contains(u"na het einde"_s));
  EXPECT_TRUE(TokenError(u"a;;"_s).contains(u"na het einde"_s));
}

TEST(Tokens, WordsMayHaveLettersOfEveryLanguage) {
  EXPECT_EQ(Tokenised(u"caf\u00E9 _x \u03A9mega2"_s),
            (QStringList{u"w:caf\u00E9"_s, u"w:_x"_s, u"w:\u03A9mega2"_s, u"$:"_s}));
}

TEST(Tokens, WordsAreComparedWithoutCase) {
  const QString select = u"Select"_s;
  const dao::Token word = dao::Tokenise(select).front();
  EXPECT_TRUE(word.IsWord(u"SELECT"_s));
  EXPECT_TRUE(word.IsName());
  EXPECT_FALSE(word.Is(u"Select"_s));
  const QString inBrackets = u"[Select]"_s;
  const dao::Token bracketed = dao::Tokenise(inBrackets).front();
  EXPECT_FALSE(bracketed.IsWord(u"SELECT"_s));
  EXPECT_TRUE(bracketed.IsName());
}

}  // namespace
