// What this library writes, read by an outside reader.
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>

#include "platform/jet/Check.h"
#include "tests/platform/jet/Witness.h"
#include "tests/platform/jet/support/RandomRows.h"
#include "tests/platform/jet/support/SampleTable.h"

namespace jet {
namespace {

using test::Column;

TableDefinition TableOfAllKinds() {
  TableDefinition table;
  table.name = u"tblAlles";
  table.columns = {Column(u"ID", ColumnType::Long),         Column(u"Ja", ColumnType::Boolean),
                   Column(u"Octet", ColumnType::Byte),      Column(u"Kort", ColumnType::Integer),
                   Column(u"Bedrag", ColumnType::Currency), Column(u"Enkel", ColumnType::Single),
                   Column(u"Dubbel", ColumnType::Double),   Column(u"Naam", ColumnType::Text, 255),
                   Column(u"Tekst", ColumnType::Memo),      Column(u"Bytes", ColumnType::Binary, 100),
                   Column(u"Groot", ColumnType::Ole)};
  table.columns[0].autonumber = true;
  IndexDefinition key;
  key.name = u"PrimaryKey";
  key.primary = true;
  key.fields = {{0, false}};
  IndexDefinition byName;
  byName.name = u"Naam";
  byName.fields = {{7, true}, {3, false}};
  table.indexes = {key, byName};
  return table;
}

class WriteWitness : public testing::Test {
 protected:
  void SetUp() override {
    if (!witness::Has("mdb-export")) GTEST_SKIP() << "mdbtools is not installed";
    folder_ = std::filesystem::temp_directory_path() / ("jet-witness-" + std::to_string(::getpid()));
    std::filesystem::create_directories(folder_);
    path_ = folder_ / "alles.mdb";
    Database::Create(path_);
    OpenOptions options;
    options.writable = true;
    database_ = Database::Open(path_, options);
  }
  void TearDown() override {
    database_.reset();
    if (!folder_.empty()) std::filesystem::remove_all(folder_);
  }

  std::filesystem::path folder_;
  std::filesystem::path path_;
  std::unique_ptr<Database> database_;
};

TEST_F(WriteWitness, ReadsEveryKindOfValueAsItWasWritten) {
  test::RandomRows random(17);
  {
    WriteTurn turn(*database_);
    database_->CreateTable(TableOfAllKinds());
    const auto writer = database_->OpenWriter(u"tblAlles");
    for (int i = 0; i < 400; ++i) {
      std::vector<Value> row = random.Row(writer->Definition());
      // The outside reader ends a short binary at its first zero.
      if (Bytes* bytes = std::get_if<Bytes>(&row[9]))
        std::replace(bytes->begin(), bytes->end(), std::uint8_t{0}, std::uint8_t{1});
      writer->Insert(row);
    }
    turn.Commit();
  }
  for (const Finding& finding : CheckDatabase(*database_))
    ADD_FAILURE() << finding.Line();
  EXPECT_EQ(witness::OutputOf("mdb-tables -1 " + witness::ShellQuoted(path_.string())), "tblAlles\n");
  witness::Cells theirs = witness::ExportWithMdbTools(path_.string(), "tblAlles");
  witness::Cells ours = witness::ExportWithJet(*database_, u"tblAlles");
  ASSERT_EQ(theirs.size(), ours.size());
  // The outside reader tells an empty value from null in long binaries only.
  for (witness::Cells* cells : {&theirs, &ours}) {
    for (std::vector<std::string>& row : *cells)
      std::replace(row.begin(), row.end(), std::string(), std::string("<null>"));
  }
  for (std::size_t i = 0; i < ours.size(); ++i)
    ASSERT_EQ(theirs[i], ours[i]) << "row " << i;
}

}  // namespace
}  // namespace jet
