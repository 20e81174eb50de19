// SPDX-License-Identifier: MIT
#include "tests/platform/jet/support/CopyTables.h"

#include "platform/jet/check/Check.h"
#include "platform/jet/table/TableWriter.h"
#include "tests/fuzz/EditBases.h"
#include "tests/platform/jet/support/Places.h"
#include "tests/platform/jet/support/SampleTable.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace jet::test {
namespace {

Bytes BaseAfter(const Bytes& before, void (*work)(Database&)) {
  files::MemoryFileSystem memory;
  memory.Put(kPath, before);
  const auto database = Database::Open(kPath, fuzz::ForEditing(), memory);
  WriteTurn turn(*database);
  work(*database);
  turn.Commit();
  return memory.Get(kPath);
}

}  // namespace

void MakeCopyTables(Database& database) {
  TableDefinition table = SpotsTable();
  std::erase_if(table.columns, [](const ColumnDefinition& column) { return column.type >= ColumnType::Ole; });
  table.columns[1].required = false;
  table.columns[1].allowZeroLength = true;
  for (const char16_t* name : {u"tblBron", u"tblDoel"}) {
    table.name = name;
    database.CreateTable(table);
  }
  const auto inserting = database.OpenWriter(u"tblBron");
  for (int i = 0; i < 150; ++i) {
    std::vector<Value> row(table.columns.size());
    row[1] = std::u16string(48, static_cast<char16_t>(u'a' + i % 26));
    inserting->Insert(row);
  }
}

void CopyRows(Database& database) {
  const Table source = database.OpenTable(u"tblBron");
  const auto filling = database.OpenWriter(u"tblDoel");
  filling->BeginCopy();
  TableCursor rows = source.Scan(filling->IndexedColumns());
  while (rows.Next())
    filling->CopyRow(rows.Row(), rows.Values());
  filling->EndCopy();
}

void EmptyCopy(Database& database) {
  database.OpenWriter(u"tblDoel")->DeleteAll();
}

const Bytes& FilledCopy() {
  static const Bytes base = BaseAfter(fuzz::SmallBase(), [](Database& database) {
    MakeCopyTables(database);
    CopyRows(database);
  });
  return base;
}

const Bytes& EmptiedCopy() {
  static const Bytes base = BaseAfter(FilledCopy(), EmptyCopy);
  return base;
}

witness::Tables StateOf(files::MemoryFileSystem& files) {
  const auto database = Database::Open(kPath, fuzz::ForEditing(), files);
  for (const Finding& finding : CheckDatabase(*database))
    EXPECT_TRUE(finding.remark) << finding.text;
  return witness::ReadWithJet(*database);
}

}  // namespace jet::test
