// SPDX-License-Identifier: MIT
#include "platform/jet/table/TableWriter.h"

#include "platform/jet/values/Codec.h"
#include "tests/platform/jet/support/Places.h"
#include "tests/platform/jet/support/SampleTable.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <random>
#include <string>
#include <vector>

namespace jet {
namespace {

using test::Column;
using test::FreshDatabase;
using test::MessageOf;
using test::Spot;

using test::kTable;

class TableWriterTest : public testing::Test {
 protected:
  void SetUp() override { database_.Create(test::SpotsTable()); }

  void Change(const std::function<void(TableWriter&)>& change) {
    WriteTurn turn(*database_);
    change(*database_->OpenWriter(kTable));
    turn.Commit();
  }

  std::vector<Value> Row(RowId row) { return database_->OpenTable(kTable).Fetch(row, {0, 1, 2, 3, 4, 5}).value(); }

  std::size_t CountByName(const std::u16string& name) {
    const Table table = database_->OpenTable(kTable);
    const std::vector<Value> key = {name};
    KeyCursor rows = table.Lookup(table.Definition().FindIndex(u"Naam"), key);
    std::size_t count = 0;
    while (rows.Next())
      ++count;
    return count;
  }

  std::string RefusalOf(const std::vector<Value>& row) {
    return MessageOf([&] { database_.Insert(kTable, row); });
  }

  FreshDatabase database_;
};

TEST_F(TableWriterTest, StoresWhatItIsGivenAndNumbersTheRows) {
  const RowId first = database_.Insert(kTable, Spot(u"Bakker", u"Vers brood"));
  const RowId second = database_.Insert(kTable, Spot(u"Slager"));
  EXPECT_EQ(Row(first), (std::vector<Value>{std::int64_t{1}, std::u16string(u"Bakker"), 36526.5,
                                            std::u16string(u"Vers brood"), Value{}, true}));
  EXPECT_EQ(Row(second)[0], Value(std::int64_t{2}));
  EXPECT_EQ(CountByName(u"BAKKER"), 1U);
  EXPECT_EQ(database_.Findings(), "");
}

TEST_F(TableWriterTest, ReturnsTheAssignedNumber) {
  Change([](TableWriter& writer) {
    std::vector<Value> row = Spot(u"Bakker");
    row[0] = std::int64_t{41};
    writer.Insert(row);
    row = Spot(u"Slager");
    writer.Insert(row);
    EXPECT_EQ(row[0], Value(std::int64_t{42}));
  });
}

TEST_F(TableWriterTest, AStaleAutonumberDoesNotCollide) {
  for (int i = 0; i < 5; ++i)
    database_.Insert(kTable, Spot(u"Bakker"));
  WriteTurn turn(*database_);
  const std::uint32_t page = database_->OpenTable(kTable).Def().page;
  Store(database_->Shared().Changes().Change(page).data() + kAutonumberAt, std::uint32_t{2});
  std::vector<Value> row = Spot(u"Slager");
  database_->OpenWriter(kTable)->Insert(row);
  EXPECT_EQ(row[0], Value(std::int64_t{6}));
  turn.Commit();
  EXPECT_EQ(database_.Findings(), "");
}

TEST_F(TableWriterTest, RefusesByTableFieldAndValueAndChangesNothing) {
  database_.Insert(kTable, Spot(u"Bakker"));
  const Bytes before = database_.Files().Get(FreshDatabase::kPath);
  std::vector<Value> row = Spot(u"Slager");
  row[0] = std::int64_t{1};
  EXPECT_EQ(RefusalOf(row), "Tabel 'tblSpots': de waarde 1 van veld 'ID' bestaat al (index 'PrimaryKey').");
  row[0] = std::int64_t{1} << 31;
  EXPECT_EQ(RefusalOf(row), "Tabel 'tblSpots': Het getal 2147483648 past niet in veld 'ID'.");
  row = Spot(u"Slager");
  row[1] = Value{};
  EXPECT_EQ(RefusalOf(row), "Tabel 'tblSpots': veld 'Naam' moet een waarde hebben.");
  EXPECT_EQ(RefusalOf(Spot(u"")), "Tabel 'tblSpots': veld 'Naam' mag geen lege tekst hebben.");
  EXPECT_EQ(RefusalOf(Spot(std::u16string(51, u'x'))),
            "Tabel 'tblSpots': De waarde is te lang voor veld 'Naam': 51 tekens, er passen er 50.");
  EXPECT_EQ(RefusalOf(Spot(u"\u4E2D")),
            "Tabel 'tblSpots': Veld 'Naam': De sorteervolgorde van het teken U+4E2D is niet bekend.");
  EXPECT_EQ(database_.Files().Get(FreshDatabase::kPath), before);
}

TEST_F(TableWriterTest, StoresLongValuesInAllFormsAndFreesTheirPages) {
  std::vector<RowId> rows;
  const std::size_t lengths[] = {1, 64, 65, 2000, 4076, 4077, 8144, 8145, 1000000};
  for (const std::size_t length : lengths)
    rows.push_back(database_.Insert(kTable, Spot(u"Lang", std::u16string(length, u'\u0416'))));
  EXPECT_EQ(database_.Findings(), "");
  for (std::size_t i = 0; i < rows.size(); ++i)
    EXPECT_EQ(Row(rows[i])[3], Value(std::u16string(lengths[i], u'\u0416')));
  const std::uint32_t most = database_->Source().PageCount();
  Change([&](TableWriter& writer) {
    for (const RowId row : rows)
      writer.Delete(row);
  });
  EXPECT_EQ(database_.Findings(), "");
  database_.Insert(kTable, Spot(u"Lang", std::u16string(900000, u'\u0416')));
  EXPECT_EQ(database_->Source().PageCount(), most);
  EXPECT_EQ(database_.Findings(), "");
}

TEST_F(TableWriterTest, AnUpdateKeepsTheOtherColumns) {
  const RowId row = database_.Insert(kTable, Spot(u"Bakker", std::u16string(5000, u't')));
  Change([&](TableWriter& writer) {
    std::vector<Value> values(6);
    values[1] = std::u16string(u"Slager");
    writer.Update(row, values, {false, true, false, false, false, false});
  });
  EXPECT_EQ(Row(row), (std::vector<Value>{std::int64_t{1}, std::u16string(u"Slager"), 36526.5,
                                          std::u16string(5000, u't'), Value{}, true}));
  EXPECT_EQ(CountByName(u"Bakker"), 0U);
  EXPECT_EQ(CountByName(u"Slager"), 1U);
  EXPECT_EQ(database_.Findings(), "");
}

TEST_F(TableWriterTest, ARowThatOutgrowsItsPageKeepsItsIdentity) {
  std::vector<RowId> rows;
  rows.reserve(60);
  for (int i = 0; i < 60; ++i)
    rows.push_back(database_.Insert(kTable, Spot(u"x")));
  const std::u16string longName(50, u'\u0416');
  for (const std::u16string& name : {longName, std::u16string(u"kort"), longName}) {
    Change([&](TableWriter& writer) {
      for (const RowId row : rows) {
        std::vector<Value> values(6);
        values[1] = name;
        values[3] = name;
        writer.Update(row, values, {false, true, false, true, false, false});
      }
    });
    EXPECT_EQ(database_.Findings(), "");
    EXPECT_EQ(CountByName(name), 60U);
  }
  Change([&](TableWriter& writer) {
    for (const RowId row : rows)
      writer.Delete(row);
  });
  EXPECT_EQ(database_.Findings(), "");
  EXPECT_EQ(database_.Rows(kTable), 0U);
}

TEST_F(TableWriterTest, GrowsFarBeyondTheFirstMapOfFreePages) {
  Change([](TableWriter& writer) {
    for (int i = 0; i < 9000; ++i) {
      std::vector<Value> row =
          Spot(u"Naam " + std::u16string(1, static_cast<char16_t>(u'a' + i % 26)), std::u16string(2500, u'x'));
      writer.Insert(row);
    }
  });
  EXPECT_GT(database_->Source().PageCount(), 9000U);
  EXPECT_EQ(database_.Findings(), "");
  EXPECT_EQ(database_.Rows(kTable), 9000U);
}

TEST_F(TableWriterTest, ATreeOfManyLevelsGrowsAndShrinksInAnyOrder) {
  std::mt19937 random(5);
  std::vector<RowId> rows;
  Change([&](TableWriter& writer) {
    for (int i = 0; i < 6000; ++i) {
      std::u16string name(50, u'\u0416');
      for (std::size_t at = random() % 50; at < 50; ++at)
        name[at] = static_cast<char16_t>(u'a' + random() % 26);
      std::vector<Value> row = Spot(name);
      rows.push_back(writer.Insert(row));
    }
  });
  EXPECT_EQ(database_.Findings(), "");
  std::shuffle(rows.begin(), rows.end(), random);
  while (!rows.empty()) {
    Change([&](TableWriter& writer) {
      for (int i = 0; i < 1000; ++i) {
        writer.Delete(rows.back());
        rows.pop_back();
      }
    });
    EXPECT_EQ(database_.Findings(), "");
  }
  database_.Insert(kTable, Spot(u"Opnieuw"));
  EXPECT_EQ(CountByName(u"Opnieuw"), 1U);
  EXPECT_EQ(database_.Findings(), "");
}

TEST_F(TableWriterTest, RowsDeletedTogetherLeaveTheOthersIntact) {
  std::mt19937 random(7);
  const std::size_t lengths[] = {0, 10, 64, 65, 400, 400, 3000, 9000};
  std::map<RowId, Value> texts;
  Change([&](TableWriter& writer) {
    for (int i = 0; i < 3000; ++i) {
      const std::u16string text(lengths[random() % std::size(lengths)], static_cast<char16_t>(u'a' + i % 26));
      std::vector<Value> row =
          Spot(std::u16string(1 + random() % 20, static_cast<char16_t>(u'a' + random() % 26)), text);
      texts[writer.Insert(row)] = row[3];
    }
    std::vector<Value> longer(6);
    longer[1] = std::u16string(50, u'\u0416');
    for (const auto& [row, text] : texts) {
      if (random() % 4 == 0) writer.Update(row, longer, {false, true, false, false, false, false});
    }
  });
  while (!texts.empty()) {
    std::vector<RowId> toDelete;
    const bool inOrder = random() % 2 == 0;
    for (const auto& [row, text] : texts) {
      if (inOrder ? toDelete.size() < 300 : random() % 3 == 0) toDelete.push_back(row);
    }
    if (toDelete.empty()) toDelete.push_back(texts.begin()->first);
    std::shuffle(toDelete.begin(), toDelete.end(), random);
    Change([&](TableWriter& writer) { writer.Delete(toDelete); });
    for (const RowId row : toDelete)
      texts.erase(row);
    ASSERT_EQ(database_.Findings(), "");
    ASSERT_EQ(database_.Rows(kTable), texts.size());
    for (const auto& [row, text] : texts)
      ASSERT_EQ(Row(row)[3], text);
  }
}

TEST_F(TableWriterTest, ARowListedTwiceIsNotDeletedTwice) {
  const RowId row = database_.Insert(kTable, Spot(u"Bakker"));
  const RowId other = database_.Insert(kTable, Spot(u"Slager"));
  const Bytes before = database_.Files().Get(FreshDatabase::kPath);
  EXPECT_NE(MessageOf([&] { Change([&](TableWriter& writer) { writer.Delete(std::vector{row, other, row}); }); }), "");
  EXPECT_EQ(database_.Files().Get(FreshDatabase::kPath), before);
}

TEST_F(TableWriterTest, UniqueIndexesAllowSeveralNullKeys) {
  TableDefinition table;
  table.name = u"tblCodes";
  table.columns = {Column(u"Code", ColumnType::Text, 10)};
  IndexDefinition unique;
  unique.name = u"Code";
  unique.unique = true;
  unique.fields = {{0, false}};
  table.indexes = {unique};
  database_.Create(table);
  database_.Insert(u"tblCodes", {Value{}});
  database_.Insert(u"tblCodes", {Value{}});
  database_.Insert(u"tblCodes", {std::u16string(u"ab")});
  EXPECT_EQ(MessageOf([&] { database_.Insert(u"tblCodes", {std::u16string(u"AB ")}); }),
            "Tabel 'tblCodes': de waarde 'AB ' van veld 'Code' bestaat al (index 'Code').");
  EXPECT_EQ(database_.Rows(u"tblCodes"), 3U);
}

}  // namespace
}  // namespace jet
