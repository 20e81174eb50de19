// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/database/Database.h"
#include "tests/platform/jet/support/RandomRows.h"

#include <map>
#include <string>
#include <vector>

namespace jet::test {

// The problems that CheckDatabase finds, one per line, without remarks.
std::string Problems(Database& database);

// Changes one table at random and keeps a model of its rows.
class RandomEditor {
 public:
  using Rows = std::map<RowId, std::vector<Value>>;

  // The model starts with the existing rows. `mostRows`: from about this number on it deletes rows until few are left.
  RandomEditor(Database& database, std::u16string table, unsigned seed, std::size_t mostRows = 400);

  // Makes `count` inserts, updates and deletes in one turn. Refused values are skipped.
  void Change(int count);
  // Deletes all rows at once.
  void DeleteAll();
  // Fails the test when a row differs from the model.
  void Verify();

  int Done() const { return done_; }
  const Rows& Model() const { return model_; }

 private:
  void ChangeOne(TableWriter& writer);
  void UpdateOne(TableWriter& writer);
  RowId AnyRow();

  Database& database_;
  std::u16string name_;
  RandomRows random_;
  Rows model_;
  std::size_t mostRows_;
  bool growing_ = true;
  int done_ = 0;
};

}  // namespace jet::test
