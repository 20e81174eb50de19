// SPDX-License-Identifier: MIT
// Rows read in the order of a number, below SQL, are those of SELECT ... ORDER BY: with and without an index, after
// changes that moved and removed rows.
#include "platform/dao/OrderedRows.h"

#include "tests/platform/dao/Scratch.h"

#include <gtest/gtest.h>

#include <random>

using namespace Qt::StringLiterals;
using namespace scratch;

namespace {

dao::IndexDef NumberIndex(dao::Direction direction, bool unique, bool ignoreNull, bool primary = false) {
  dao::IndexDef index;
  index.name = u"Volgorde"_s;
  index.fields = {{u"Nummer"_s, direction}, {u"Plaats"_s, dao::Direction::Ascending}};
  index.unique = unique || primary;
  index.primary = index.required = primary;
  index.ignoreNull = ignoreNull;
  return index;
}

// Which index the table has, and whether numbers may be missing or the same.
struct Order {
  const char* name;
  QList<dao::IndexDef> indexes;
  dao::FieldType type = dao::FieldType::Long;
};

class OrderedRows : public testing::TestWithParam<Order> {
 protected:
  OrderedRows() {
    scratch_.Open().CreateTable({u"tblRijen"_s,
                                 {Field(u"Plaats"_s, dao::FieldType::Long), Field(u"Nummer"_s, GetParam().type),
                                  Field(u"Tekst"_s, dao::FieldType::Memo), Field(u"Naam"_s, dao::FieldType::Text, 50)},
                                 GetParam().indexes});
  }

  int Below(int end) { return static_cast<int>(random_() % static_cast<unsigned>(end)); }

  // Shuffled numbers and texts that are stored in the row and outside of it; then rows that grow, and holes.
  void Fill() {
    const auto storage = dao::OpenStorage(scratch_.Path());
    const auto turn = storage->Begin(dao::Access::Write);
    const auto table = storage->OpenTable(u"tblRijen"_s);
    const bool mayBeNull = GetParam().indexes.isEmpty() || !GetParam().indexes.first().required;
    for (int place = 0; place < 1500; ++place) {
      const bool isNull = mayBeNull && Below(40) == 0;
      const std::int64_t number = Below(2000) - 1000;
      dao::Value key = number;
      if (GetParam().type == dao::FieldType::Double) key = static_cast<double>(number) / 2;
      table->Insert({std::int64_t{place}, isNull ? dao::Value() : key, RandomText(), u"naam"});
    }
    turn->Commit();
    dao::Database database = scratch_.Open();
    database.Execute(u"UPDATE tblRijen SET Naam = \"%1\" WHERE Plaats < 300"_s.arg(QString(50, u'z')));
    database.Execute(u"DELETE FROM tblRijen WHERE Plaats > 700 AND Plaats < 800"_s);
  }

  dao::Value RandomText() {
    if (Below(20) == 0) return {};
    static const std::u16string kLetters = u"abc \u00E9\u20AC\u0416";
    std::u16string text;
    for (int length = Below(8) == 0 ? 3000 : Below(200); length > 0; --length)
      text += kLetters[static_cast<std::size_t>(Below(Below(5) == 0 ? 7 : 4))];
    return text;
  }

  QStringList Read() {
    const auto storage = dao::OpenStorage(scratch_.Path());
    const auto reading = storage->Begin(dao::Access::Read);
    dao::OrderedRows rows(*storage, u"TBLRIJEN"_s, {u"nummer"_s, u"Plaats"_s, u"Tekst"_s});
    QStringList all;
    while (rows.Next()) {
      const QStringView text = rows.Text(2);
      all += Line(rows.Field(0), rows.Field(1), text.isNull() ? u"-"_s : text.toString());
      EXPECT_EQ(rows.Field(2).toString(), text.toString());
    }
    return all;
  }
  QStringList Selected(const QString& order) {
    QStringList all;
    for (dao::Recordset rows = scratch_.Open().OpenRecordset(u"SELECT * FROM tblRijen"_s + order); !rows.Eof();
         rows.MoveNext()) {
      const QVariant text = rows.Field(u"Tekst"_s);
      all += Line(rows.Field(u"Nummer"_s), rows.Field(u"Plaats"_s), text.isNull() ? u"-"_s : text.toString());
    }
    return all;
  }
  static QString Line(const QVariant& number, const QVariant& place, const QString& text) {
    return (number.isNull() ? u"-"_s : number.toString()) + u'|' + place.toString() + u'|' + text;
  }

  Scratch scratch_;
  std::mt19937 random_{11};
};

TEST_P(OrderedRows, AreThoseOfTheSelect) {
  EXPECT_EQ(Read(), QStringList());
  Fill();
  const QStringList expected = Selected(u" ORDER BY Nummer"_s);
  EXPECT_GT(expected.size(), 1300);
  QStringList read = Read();
  EXPECT_EQ(read, expected);
  // Found through the table, not through an index.
  QStringList stored = Selected({});
  stored.sort();
  read.sort();
  EXPECT_EQ(read, stored);
}

TEST_P(OrderedRows, AMissingTableOrFieldIsNamed) {
  const auto storage = dao::OpenStorage(scratch_.Path());
  const auto reading = storage->Begin(dao::Access::Read);
  EXPECT_EQ(ErrorOf([&] { const dao::OrderedRows rows(*storage, u"tblWeg"_s, {u"ID"_s}); }),
            u"De tabel 'tblWeg' bestaat niet in '%1'."_s.arg(scratch_.Path()));
  EXPECT_EQ(ErrorOf([&] {
              const dao::OrderedRows rows(*storage, u"tblRijen"_s, {u"Nummer"_s, u"Weg"_s});
            }),
            u"Het veld 'Weg' bestaat niet in de tabel 'tblRijen'."_s);
}

INSTANTIATE_TEST_SUITE_P(
    Indexes, OrderedRows,
    testing::Values(Order{"Key", {NumberIndex(dao::Direction::Ascending, true, false, true)}},
                    Order{"Plain", {NumberIndex(dao::Direction::Ascending, false, false)}},
                    Order{"Descending", {NumberIndex(dao::Direction::Descending, false, false)}},
                    Order{"WithoutNulls", {NumberIndex(dao::Direction::Ascending, false, true)}},
                    Order{"Broken", {NumberIndex(dao::Direction::Ascending, true, false)}, dao::FieldType::Double},
                    Order{"None", {}}, Order{"NoneBroken", {}, dao::FieldType::Double}),
    [](const testing::TestParamInfo<Order>& order) { return std::string(order.param.name); });

}  // namespace
