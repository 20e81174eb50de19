// SPDX-License-Identifier: MIT
#include "platform/jet/pages/Pages.h"
#include "platform/jet/table/TableWriter.h"
#include "tests/platform/jet/support/RandomRows.h"
#include "tests/platform/jet/support/SampleTable.h"
#include "tests/tools/RunTool.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

class Dump : public testing::Test {
 protected:
  // A table of `rows` rows of every kind of field. Returns where each row is.
  std::vector<jet::RowId> Fill(int rows) const {
    jet::Database::Create(File().toStdString());
    jet::OpenOptions options;
    options.writable = true;
    const auto database = jet::Database::Open(File().toStdString(), options);
    jet::WriteTurn turn(*database);
    jet::TableDefinition table = jet::test::AllKindsTable();
    table.columns.push_back(jet::test::Column(u"Datum", jet::ColumnType::Date));
    table.columns.push_back(jet::test::Column(u"Guid", jet::ColumnType::Guid));
    database->CreateTable(table);
    const auto writer = database->OpenWriter(table.name);
    jet::test::RandomRows random(5);
    std::vector<jet::RowId> ids;
    for (int i = 0; i < rows; ++i) {
      std::vector<jet::Value> row = random.Row(writer->Definition());
      ids.push_back(writer->Insert(row));
    }
    turn.Commit();
    return ids;
  }

  // Gives a page of rows more slots than a page can have.
  void Damage(std::uint32_t page) const {
    QFile file(File());
    ASSERT_TRUE(file.open(QIODevice::ReadWrite) && file.seek(page * qint64{jet::kPageSize} + 12));
    ASSERT_EQ(file.write("\xFF\xFF", 2), 2);
  }

  QString File() const { return folder_.filePath(u"alles.mdb"_s); }

  QTemporaryDir folder_;
};

TEST_F(Dump, HasTheSameValuesAsSql) {
  Fill(60);
  const ToolRun dump = RunTool({u"dump"_s, File(), u"TBLALLES"_s});
  EXPECT_EQ(dump.exitCode, kDone);
  EXPECT_EQ(dump.err, "");
  EXPECT_EQ(dump.out, RunTool({u"sql"_s, File(), u"SELECT * FROM tblAlles"_s}).out);
  EXPECT_EQ(std::count(dump.out.begin(), dump.out.end(), '\r'), 61);
}

TEST_F(Dump, ContinuesAfterADamagedPageAndReportsIt) {
  const std::vector<jet::RowId> rows = Fill(60);
  const std::uint32_t page = jet::PageOf(rows[30]);
  const auto lost = std::count_if(rows.begin(), rows.end(), [&](jet::RowId row) { return jet::PageOf(row) == page; });
  ASSERT_LT(lost, 40);
  Damage(page);
  const ToolRun dump = RunTool({u"dump"_s, File(), u"tblAlles"_s});
  EXPECT_EQ(dump.exitCode, kFailed);
  EXPECT_EQ(std::count(dump.out.begin(), dump.out.end(), '\r'), 61 - lost);
  EXPECT_EQ(std::count(dump.err.begin(), dump.err.end(), '\n'), 1);
  for (const std::string& named : {std::string("alles.mdb"), std::string("tblAlles"), "pagina " + std::to_string(page)})
    EXPECT_NE(dump.err.find(named), std::string::npos) << dump.err;
}

TEST_F(Dump, AStatementOverADamagedPageIsAnError) {
  const std::vector<jet::RowId> rows = Fill(60);
  Damage(jet::PageOf(rows[30]));
  const ToolRun run = RunTool({u"sql"_s, File(), u"SELECT * FROM tblAlles"_s});
  EXPECT_EQ(run.exitCode, kFailed);
  EXPECT_NE(run.err.find("beschadigd"), std::string::npos) << run.err;
}

TEST_F(Dump, AMissingTableIsReportedByName) {
  Fill(1);
  const ToolRun run = RunTool({u"dump"_s, File(), u"tblNiets"_s});
  EXPECT_EQ(run.exitCode, kFailed);
  EXPECT_NE(run.err.find("tblNiets"), std::string::npos) << run.err;
}

}  // namespace
