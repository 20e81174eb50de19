// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/database/Database.h"

#include <filesystem>
#include <map>
#include <memory>
#include <string>

namespace jet::test {

// A database with the table tblSpots on a real disk, in a folder of its own that goes with this. The folder lies where
// SPOTROOSTER_PROOF_FOLDER says, or among the temporary files.
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
  // Whether a crashed program's journal lies beside it.
  bool HasJournal() const;

  // What CheckDatabase says, remarks too, a line each.
  std::string Findings() const;
  Rows Read() const;
  // How many rows mdb-export finds.
  std::size_t RowsForWitness() const;

 private:
  std::filesystem::path folder_;
  std::filesystem::path path_;
};

// The row with this ID; 0 when there is none.
RowId FindSpot(Database& database, std::int64_t id);
void InsertSpot(Database& database, std::int64_t id, const ProofFile::Row& row);

}  // namespace jet::test
