// SPDX-License-Identifier: MIT
// A look-up of a name by UCase finds the rows that the text order calls equal, from a file and from a server.
#include "platform/dao/SoughtText.h"

#include "platform/dao/SqlText.h"
#include "platform/dao/Storage.h"
#include "platform/jet/values/TextOrder.h"
#include "tests/platform/dao/Scratch.h"

#include <gtest/gtest.h>

#include <random>

using namespace Qt::StringLiterals;
using namespace scratch;

namespace {

QString Sought(const QString& sql) {
  const std::vector<dao::Token> tokens = dao::Tokenise(sql);
  const auto found = dao::SoughtTextIn(tokens);
  return found ? found->field + u'|' + found->text : u"-"_s;
}

int CompareIgnoringCase(const QString& one, const QString& other) {
  return jet::TextOrder::Legacy().Compare(dao::UCase(one).toStdU16String(), dao::UCase(other).toStdU16String());
}

// What the name check of an editor asks.
QString Query(const QString& name) {
  return u"SELECT tblNamen.ID From tblNamen WHERE UCase(tblNamen.Naam) =  "_s + dao::TextLiteral(dao::UCase(name));
}

// Names that differ in case, accents, spaces and characters that are equal to others or mean something in a pattern.
QStringList Names() {
  QStringList names{u"abc"_s,       u"ABC"_s,       u" abc"_s,      u"abc  "_s,     u"a b c"_s,       u"a-bc"_s,
                    u"ab-c"_s,      u"a'bc"_s,      u"\u00E9abc"_s, u"eabc"_s,      u"\u00C9ABC"_s,   u"stra\u00DFe"_s,
                    u"strasse"_s,   u"STRASSE"_s,   u"\u00E6on"_s,  u"aeon"_s,      u"\u00C6ON"_s,    u"m\u00B2"_s,
                    u"m2"_s,        u"100%"_s,      u"100_"_s,      u"100x"_s,      u"a\\b"_s,        u"a\\\\b"_s,
                    u"a/b"_s,       u"a?b"_s,       u"a*b"_s,       u"a[b]"_s,      u"D\u0131t"_s,    u"DIT"_s,
                    u"dit"_s,       u"\u017Fpot"_s, u"spot"_s,      u"SPOT"_s,      u"\u212Aelvin"_s, u"kelvin"_s,
                    u"\u4E2Dabc"_s, u"abc\u4E2D"_s, u"a\u0001bc"_s, u"a\tbc"_s,     u"a\u007Fbc"_s,   u"a\u00A0b"_s,
                    u"a\u200Bbc"_s, u"a\u202Abc"_s, u"a\u2013bc"_s, u"\u2019abc"_s, u"Jan''s"_s,      u"0123"_s,
                    u"123"_s,       u"\u00B9"_s,    u"x\u00B9y"_s,  u"X1Y"_s,       u"\u0153uf"_s,    u"oeuf"_s,
                    u"\u0133s"_s,   u"ijs"_s,       u"1"_s,         u"-"_s,         u"'"_s,           u"-'"_s,
                    u"'-"_s,        u"~"_s,         u"!"_s,         u"\U0001F600"_s};
  std::mt19937 random(3);
  static const QString kLetters = u"aAbB1 -'%_\u00E9\u00DFs"_s;
  for (int i = 0; i < 150; ++i) {
    QString name;
    for (auto length = 1 + random() % 5; length > 0; --length)
      name += kLetters[static_cast<qsizetype>(random() % static_cast<std::size_t>(kLetters.size()))];
    names += name;
  }
  return names;
}

}  // namespace

TEST(SoughtText, IsTheTextOfAConditionOnOneTable) {
  EXPECT_EQ(Sought(u"SELECT t.ID From t WHERE UCase(t.Naam) =  \"ABC\""_s), u"Naam|ABC"_s);
  EXPECT_EQ(Sought(u"select Naam from [t] where ucase(Naam) = 'A''B' and not t.ID = -5;"_s), u"Naam|A'B"_s);
  for (const QString& condition :
       {u"UCase(Naam) = \"A\" OR ID = 1"_s, u"UCase(Naam) = \"A\" AND NOT ID = 1 OR ID = 2"_s,
        u"NOT UCase(Naam) = \"A\""_s, u"UCase(Naam) <> \"A\""_s, u"LCase(Naam) = \"a\""_s,
        u"UCase(Naam) = \"A\" + \"B\""_s, u"UCase(Naam) = 1"_s, u"UCase(u.Naam) = \"A\""_s, u"(UCase(Naam) = \"A\")"_s,
        u"Naam = \"A\""_s, u"UCase(Naam) = \"A\" AND ID = ID"_s})
    EXPECT_EQ(Sought(u"SELECT ID FROM t WHERE "_s + condition), u"-"_s) << qPrintable(condition);
  EXPECT_EQ(Sought(u"SELECT ID FROM t, u WHERE UCase(Naam) = \"A\""_s), u"-"_s);
  EXPECT_EQ(Sought(u"SELECT ID FROM t"_s), u"-"_s);
  EXPECT_EQ(Sought(u"SELECT ID FROM t WHERE"_s), u"-"_s);
  EXPECT_EQ(Sought(u"WHERE UCase(Naam) = \"A\""_s), u"-"_s);
}

// Why a server may decide about ASCII texts: every one of up to three characters of each kind.
TEST(SoughtText, AsciiTextsAreEqualButForCaseAndSpacesAtTheEnd) {
  QStringList texts{u""_s};
  const auto add = [&](const QStringList& starts, const QString& letters) {
    QStringList longer;
    for (const QString& start : starts) {
      for (const QChar letter : letters)
        longer += start + letter;
    }
    texts += longer;
    return longer;
  };
  QString all;
  for (char16_t unit = 1; unit < 0x80; ++unit)
    all += unit;
  add({u""_s}, all);
  const QString kinds = u"aAb1 -'.~\u0001\t"_s;
  add(add({u""_s, u"x"_s}, kinds), kinds);
  for (const QString& one : texts) {
    for (const QString& other : texts) {
      const auto folded = [](QString text) {
        while (text.endsWith(u' '))
          text.chop(1);
        return text.toLower();
      };
      if ((CompareIgnoringCase(one, other) == 0) != (folded(one) == folded(other)))
        ADD_FAILURE() << qPrintable(one) << " and " << qPrintable(other);
    }
  }
}

TEST(SoughtText, FindsTheRowsThatTheTextOrderCallsEqual) {
  const Scratch scratch;
  scratch.Open().CreateTable({u"tblNamen"_s,
                              {Field(u"ID"_s, dao::FieldType::Long), Field(u"Naam"_s, dao::FieldType::Text, 50)},
                              {Key({u"ID"_s})}});
  const QStringList names = Names();
  const auto storage = dao::OpenStorage(scratch.Path());
  {
    const auto turn = storage->Begin(dao::Access::Write);
    const auto table = storage->OpenTable(u"tblNamen"_s);
    for (qsizetype i = 0; i < names.size(); ++i)
      table->Insert({std::int64_t{i}, names[i].toStdU16String()});
    table->Insert({std::int64_t{names.size()}, dao::Value()});
    turn->Commit();
  }
  qsizetype found = 0;
  for (const QString& name : names) {
    QStringList expected;
    for (qsizetype i = 0; i < names.size(); ++i) {
      if (CompareIgnoringCase(names[i], name) == 0) expected += QString::number(i);
    }
    EXPECT_EQ(Rows(scratch.Open(), Query(name)), expected) << qPrintable(name);
    found += expected.size();
    const QString own = expected.first();
    expected.removeFirst();
    EXPECT_EQ(Rows(scratch.Open(), Query(name) + u" AND NOT tblNamen.ID = "_s + own), expected) << qPrintable(name);
  }
  EXPECT_GT(found, names.size() + 20);
}
