// SPDX-License-Identifier: MIT
#include "tests/platform/jet/support/ProofFile.h"

#include "platform/jet/check/Check.h"
#include "platform/jet/table/TableWriter.h"
#include "tests/platform/jet/support/Places.h"
#include "tests/platform/jet/support/SampleTable.h"
#include "tests/platform/jet/support/Witness.h"

#include <unistd.h>

#include <cstdlib>
#include <memory>
#include <system_error>
#include <variant>
#include <vector>

namespace jet::test {

namespace {

std::filesystem::path Parent() {
  const char* said = std::getenv("SPOTROOSTER_PROOF_FOLDER");
  return said != nullptr ? std::filesystem::path(said) : std::filesystem::temp_directory_path();
}

}  // namespace

ProofFile::ProofFile()
    : folder_(Parent() / ("jet-proof-" + std::to_string(::getpid()))), path_(folder_ / "station.mdb") {
  std::filesystem::create_directories(folder_);
  Database::Create(path_);
  const auto database = Open();
  WriteTurn turn(*database);
  database->CreateTable(SpotsTable());
  turn.Commit();
}

ProofFile::~ProofFile() {
  std::error_code ignored;
  std::filesystem::remove_all(folder_, ignored);
}

std::unique_ptr<Database> ProofFile::Open() const {
  OpenOptions options;
  options.writable = true;
  return Database::Open(path_, options);
}

bool ProofFile::HasJournal() const {
  return std::filesystem::exists(path_.string() + "-journal");
}

std::string ProofFile::Findings() const {
  const auto database = Open();
  std::string findings;
  for (const Finding& finding : CheckDatabase(*database))
    findings += finding.Line() + '\n';
  return findings;
}

ProofFile::Rows ProofFile::Read() const {
  const auto database = Open();
  const Table table = database->OpenTable(kTable);
  Rows rows;
  TableCursor cursor = table.Scan({0, 1, 3});
  while (cursor.Next()) {
    const auto* text = std::get_if<std::u16string>(&cursor.Values()[2]);
    rows[std::get<std::int64_t>(cursor.Values()[0])] = {std::get<std::u16string>(cursor.Values()[1]),
                                                        text != nullptr ? *text : std::u16string()};
  }
  return rows;
}

std::size_t ProofFile::RowsForWitness() const {
  return witness::ReadWith(witness::Reader::MdbTools, path_.string()).at("tblSpots").rows.size();
}

RowId FindSpot(Database& database, std::int64_t id) {
  const Table table = database.OpenTable(kTable);
  const std::vector<Value> key = {id};
  KeyCursor cursor = table.Lookup(table.Definition().FindIndex(u"PrimaryKey"), key);
  return cursor.Next() ? cursor.Id() : 0;
}

void InsertSpot(Database& database, std::int64_t id, const ProofFile::Row& row) {
  std::vector<Value> values = Spot(row.name, row.text);
  values[0] = id;
  database.OpenWriter(kTable)->Insert(values);
}

}  // namespace jet::test
