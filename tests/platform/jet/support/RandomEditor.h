// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/database/Database.h"
#include "tests/platform/jet/support/RandomRows.h"

#include <map>
#include <string>
#include <vector>

namespace jet::test {

// The problems that CheckDatabase finds, a line each; remarks are left out.
std::string Problems(Database& database);

// Changes one table at random and knows which rows must be there.
class RandomEditor {
 public:
  using Rows = std::map<RowId, std::vector<Value>>;

  // The model begins with the rows that are there. `mostRows`: from about there on it only shrinks the table until few
  // are left.
  RandomEditor(Database& database, std::u16string table, unsigned seed, std::size_t mostRows = 400);

  // Inserts, updates and deletes, `count` in all, in one turn. Values that the table refuses are skipped.
  void Change(int count);
  // Deletes all rows at once.
  void DeleteAll();
  // Fails the test when a row is not as the model has it.
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
