// SPDX-License-Identifier: MIT
// Memos that share their pieces, which only a damaged file has: the amount that is read is limited by the file's size.
#include "platform/jet/database/Database.h"
#include "platform/jet/table/TableWriter.h"
#include "platform/jet/values/Error.h"
#include "tests/platform/jet/DatabaseImage.h"
#include "tests/platform/jet/support/SampleTable.h"
#include "tests/platform/jet/support/SharedChain.h"

#include <gtest/gtest.h>

#include <string>
#include <variant>

namespace jet {
namespace {

constexpr int kRows = 200;

// The result of a scan.
struct Scanned {
  std::size_t rows = 0;
  std::size_t characters = 0;
  std::size_t damaged = 0;
  std::string firstDamage;
};

Scanned ScanAll(const Table& table) {
  Scanned scanned;
  TableCursor rows = table.Scan({0, 1});
  for (bool more = true; more;) {
    try {
      more = rows.Next();
      if (!more) break;
      ++scanned.rows;
      scanned.characters += std::get<std::u16string>(rows.Values()[1]).size();
    } catch (const Error& error) {
      EXPECT_EQ(error.Code(), ErrorCode::Damaged);
      if (++scanned.damaged == 1) scanned.firstDamage = error.what();
    }
  }
  return scanned;
}

TEST(SharedLongValues, AreReadUpToTheSizeOfTheFile) {
  const Bytes file = test::SharedChain(kRows, 20);
  const auto database = OpenBytes(file);
  const Scanned scanned = ScanAll(database->OpenTable(u"Teksten"));
  EXPECT_EQ(scanned.rows + scanned.damaged, std::size_t{kRows});
  EXPECT_GT(scanned.rows, 0U);
  EXPECT_LE(2 * scanned.characters, file.size());
  EXPECT_NE(scanned.firstDamage.find("samen langer dan het bestand"), std::string::npos) << scanned.firstDamage;
}

TEST(SharedLongValues, AreReadEachTimeTheyAreAskedFor) {
  const auto database = OpenBytes(test::SharedChain(1, 20));
  const Table table = database->OpenTable(u"Teksten");
  for (int i = 0; i < 5; ++i)
    EXPECT_EQ(ScanAll(table).rows, 1U);
}

TEST(SharedLongValues, AreNotFollowedForEachRowThatIsDeleted) {
  OpenOptions options;
  options.writable = true;
  const auto database = OpenBytes(test::SharedChain(kRows, 20), options);
  WriteTurn turn(*database);
  const auto writer = database->OpenWriter(u"Teksten");
  std::vector<RowId> rows;
  const Table table = database->OpenTable(u"Teksten");
  for (TableCursor cursor = table.Scan({}); cursor.Next();)
    rows.push_back(cursor.Id());
  const std::string message = test::MessageOf([&] { writer->Delete(rows); });
  EXPECT_NE(message.find("samen langer dan het bestand"), std::string::npos) << message;
}

}  // namespace
}  // namespace jet
