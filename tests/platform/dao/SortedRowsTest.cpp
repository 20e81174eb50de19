// SPDX-License-Identifier: MIT
// ORDER BY a text field gives the order of the text order's comparisons, whatever the texts are.
#include "platform/dao/Storage.h"
#include "platform/jet/values/TextOrder.h"
#include "tests/platform/dao/Scratch.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

using namespace Qt::StringLiterals;
using namespace scratch;

namespace {

// With and without characters that have no known weight.
class SortedRows : public testing::TestWithParam<bool> {
 protected:
  static constexpr int kRows = 3000;

  SortedRows() {
    scratch_.Open().CreateTable({u"tblTeksten"_s,
                                 {Field(u"ID"_s, dao::FieldType::Long), Field(u"Naam"_s, dao::FieldType::Text, 255),
                                  Field(u"Groep"_s, dao::FieldType::Integer), Field(u"Los"_s, dao::FieldType::Memo)},
                                 {Key({u"ID"_s})}});
    const auto storage = dao::OpenStorage(scratch_.Path());
    const auto turn = storage->Begin(dao::Access::Write);
    const auto table = storage->OpenTable(u"tblTeksten"_s);
    bool hasUnknown = false;
    for (int id = 1; id <= kRows; ++id) {
      const std::u16string text = RandomText();
      hasUnknown = hasUnknown || jet::TextOrder::Legacy().FirstUnknown(text);
      const bool isNull = Below(20) == 0;
      table->Insert({std::int64_t{id}, isNull ? dao::Value() : dao::Value(text), std::int64_t{Below(3)}, text});
    }
    turn->Commit();
    EXPECT_EQ(hasUnknown, GetParam());
  }

  int Below(int end) { return static_cast<int>(random_() % static_cast<unsigned>(end)); }

  // Many equal ones and equal starts, and characters without a known weight.
  std::u16string RandomText() {
    static const std::u16string kLetters = u"aAbB\u00E9e \u00DF\u00E6-'1\u03A9\u0430\u2019\u4E2D";
    const auto letters = static_cast<int>(kLetters.size()) - (GetParam() ? 0 : 1);
    const int length = Below(10) == 0 ? 240 + Below(16) : Below(5);
    std::u16string text = Below(2) == 0 ? u"Bakkerij " : u"";
    while (static_cast<int>(text.size()) < length)
      text += kLetters[static_cast<std::size_t>(Below(Below(30) == 0 ? letters : 11))];
    return text.substr(0, 255);
  }

  // The numbers of the rows with a condition, sorted by comparing their texts.
  QStringList Expected(const QString& where) {
    struct Row {
      QString id;
      QVariant text;
    };
    std::vector<Row> all;
    for (dao::Recordset rows = scratch_.Open().OpenRecordset(u"SELECT ID, Naam FROM tblTeksten "_s + where);
         !rows.Eof(); rows.MoveNext())
      all.push_back({rows.Field(0).toString(), rows.Field(1)});
    std::stable_sort(all.begin(), all.end(), [](const Row& one, const Row& other) {
      if (!one.text.isValid() || !other.text.isValid()) return !one.text.isValid() && other.text.isValid();
      return jet::TextOrder::Legacy().Compare(one.text.toString().toStdU16String(),
                                              other.text.toString().toStdU16String()) < 0;
    });
    QStringList ids;
    for (const Row& row : all)
      ids += row.id;
    return ids;
  }

  Scratch scratch_;
  std::mt19937 random_{7};
};

TEST_P(SortedRows, AreInTheOrderOfTheComparisons) {
  for (const QString& where : {u""_s, u"WHERE Groep = 1"_s, u"WHERE Groep = 1 OR Groep = 2"_s, u"WHERE Groep = 9"_s}) {
    EXPECT_EQ(Rows(scratch_.Open(), u"SELECT ID FROM tblTeksten "_s + where + u" ORDER BY Naam"_s), Expected(where))
        << qPrintable(where);
  }
}

TEST_P(SortedRows, HaveAllTheirFields) {
  dao::Database database = scratch_.Open();
  QStringList sorted = Rows(database, u"SELECT * FROM tblTeksten ORDER BY tblTeksten.Naam"_s);
  QStringList stored = Rows(database, u"SELECT * FROM tblTeksten"_s);
  EXPECT_NE(sorted, stored);
  sorted.sort();
  stored.sort();
  EXPECT_EQ(sorted, stored);
}

TEST_P(SortedRows, AJoinIsSortedToo) {
  scratch_.Open().CreateTable({u"tblGroepen"_s, {Field(u"Nummer"_s, dao::FieldType::Integer)}, {}});
  scratch_.Open().Execute(u"INSERT INTO tblGroepen VALUES (1)"_s);
  EXPECT_EQ(Rows(scratch_.Open(),
                 u"SELECT tblTeksten.ID FROM tblTeksten INNER JOIN tblGroepen ON tblTeksten.Groep = tblGroepen.Nummer "
                 "ORDER BY tblTeksten.Naam"_s),
            Expected(u"WHERE Groep = 1"_s));
}

INSTANTIATE_TEST_SUITE_P(Letters, SortedRows, testing::Bool());

}  // namespace
