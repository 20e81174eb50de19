// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/database/Database.h"

#include <filesystem>
#include <map>
#include <memory>
#include <string>

namespace jet::test {

// A database with the table tblSpots on a real disk, in a new folder that the destructor removes. The folder is in
// SPOTROOSTER_PROOF_FOLDER or, when that is not set, with the temporary files.
class ProofFile {
 public:
  struct Row {
    std::u16string name;
    std::u16string text;
    bool operator==(const Row&) const = default;
  };
  using Rows = std::map<std::int64_t, Row>;

  ProofFile();
  ~ProofFile();
  ProofFile(const ProofFile&) = delete;
  ProofFile& operator=(const ProofFile&) = delete;

  const std::filesystem::path& Folder() const { return folder_; }
  const std::filesystem::path& Path() const { return path_; }
  std::unique_ptr<Database> Open() const;
  // Whether the journal of a crashed program exists.
  bool HasJournal() const;

  // The findings of CheckDatabase, including remarks, one per line.
  std::string Findings() const;
  Rows Read() const;
  // The number of rows that mdb-export finds.
  std::size_t RowsForWitness() const;

 private:
  std::filesystem::path folder_;
  std::filesystem::path path_;
};

// The row with this ID; 0 when there is none.
RowId FindSpot(Database& database, std::int64_t id);
void InsertSpot(Database& database, std::int64_t id, const ProofFile::Row& row);

}  // namespace jet::test
