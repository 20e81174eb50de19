// SPDX-License-Identifier: MIT
// Values whose index entry is too long for a page.
#include "platform/jet/table/TableWriter.h"
#include "platform/jet/values/Error.h"
#include "tests/platform/jet/support/SampleTable.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace jet {
namespace {

using test::Column;

const std::u16string kLongKeyTable = u"tblLang";
// A hyphen takes four bytes in a key.
const std::u16string kLongKey(255, u'-');

class LongIndexKey : public testing::Test {
 protected:
  void SetUp() override {
    TableDefinition table;
    table.name = kLongKeyTable;
    table.columns = {Column(u"Kort", ColumnType::Long)};
    for (const char16_t* name : {u"A", u"B", u"C", u"D"})
      table.columns.push_back(Column(name, ColumnType::Text, 255));
    IndexDefinition index;
    index.name = u"Samen";
    index.fields = {{0, false}, {1, false}, {2, false}, {3, false}, {4, false}};
    table.indexes = {index};
    database_.Create(table);
  }

  static std::vector<Value> Row(std::int64_t number, const std::u16string& text) {
    return {number, text, text, text, text + u"-a"};
  }

  test::FreshDatabase database_;
};

TEST_F(LongIndexKey, IsAnErrorAboutTheValueThatNamesIndexAndField) {
  const RowId row = database_.Insert(kLongKeyTable, Row(1, u"kort"));
  std::vector<Value> tooLong = Row(2, std::u16string(253, u'-'));
  try {
    database_.Insert(kLongKeyTable, tooLong);
    FAIL() << "inserted";
  } catch (const Error& error) {
    EXPECT_EQ(error.Code(), ErrorCode::TooLong);
    EXPECT_EQ(std::string(error.what()), "Tabel 'tblLang': de waarde van veld 'D' is te lang voor index 'Samen'.");
  }
  WriteTurn turn(*database_);
  const auto writer = database_->OpenWriter(kLongKeyTable);
  EXPECT_NE(test::MessageOf([&] { writer->Update(row, tooLong, {true, true, true, true, true}); }), "");
  turn.Commit();
  EXPECT_EQ(database_.Findings(), "");
  EXPECT_EQ(database_.Rows(kLongKeyTable), 1U);
}

TEST_F(LongIndexKey, TheLongestThatAPageTakesIsStoredManyTimes) {
  const std::u16string text(220, u'-');  // three and a shorter one fill nearly a page
  for (std::int64_t number = 0; number < 30; ++number)
    database_.Insert(kLongKeyTable, {number * 7 % 30, text, text, text, std::u16string(228, u'-')});
  EXPECT_EQ(database_.Findings(), "");
  EXPECT_EQ(database_.Rows(kLongKeyTable), 30U);
}

}  // namespace
}  // namespace jet
