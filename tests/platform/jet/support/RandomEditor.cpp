// SPDX-License-Identifier: MIT
#include "tests/platform/jet/support/RandomEditor.h"

#include "platform/jet/check/Check.h"
#include "platform/jet/table/TableWriter.h"
#include "platform/jet/values/Error.h"
#include "platform/jet/values/Utf8.h"

#include <gtest/gtest.h>

#include <utility>

namespace jet::test {

namespace {

RandomEditor::Rows ReadAll(const Table& table) {
  ColumnSet columns(table.Definition().columns.size());
  for (std::size_t i = 0; i < columns.size(); ++i)
    columns[i] = i;
  RandomEditor::Rows rows;
  TableCursor cursor = table.Scan(columns);
  while (cursor.Next())
    rows[cursor.Id()] = cursor.Values();
  return rows;
}

// Errors that come before any change: an invalid value, an unknown key, a cascade.
bool IsRefusal(ErrorCode code) {
  return code == ErrorCode::Duplicate || code == ErrorCode::Required || code == ErrorCode::Relation ||
         code == ErrorCode::TooLong || code == ErrorCode::UnknownCharacter || code == ErrorCode::Unsupported;
}

}  // namespace

std::string Problems(Database& database) {
  std::string problems;
  for (const Finding& finding : CheckDatabase(database)) {
    if (!finding.remark) problems += finding.Line() + '\n';
  }
  return problems;
}

RandomEditor::RandomEditor(Database& database, std::u16string table, unsigned seed, std::size_t mostRows)
    : database_(database),
      name_(std::move(table)),
      random_(seed),
      model_(ReadAll(database.OpenTable(name_))),
      mostRows_(mostRows) {}

void RandomEditor::Change(int count) {
  WriteTurn turn(database_);
  const auto writer = database_.OpenWriter(name_);
  for (int i = 0; i < count; ++i) {
    try {
      ChangeOne(*writer);
    } catch (const Error& error) {
      if (!IsRefusal(error.Code())) throw;
    }
  }
  turn.Commit();
}

void RandomEditor::DeleteAll() {
  WriteTurn turn(database_);
  database_.OpenWriter(name_)->DeleteAll();
  turn.Commit();
  model_.clear();
  ++done_;
}

void RandomEditor::Verify() {
  const Rows rows = ReadAll(database_.OpenTable(name_));
  ASSERT_EQ(rows.size(), model_.size());
  for (const auto& [id, values] : model_) {
    const auto found = rows.find(id);
    ASSERT_NE(found, rows.end()) << ToUtf8(name_) << " row " << id;
    ASSERT_EQ(found->second, values) << ToUtf8(name_) << " row " << id;
  }
}

void RandomEditor::ChangeOne(TableWriter& writer) {
  const std::size_t kind = random_.Below(growing_ ? 5 : 4);
  if (kind >= 3 || model_.empty()) {
    std::vector<Value> values = random_.Row(writer.Definition());
    const RowId row = writer.Insert(values);
    model_[row] = values;
  } else if (kind == 0) {
    const RowId row = AnyRow();
    writer.Delete(row);
    model_.erase(row);
  } else {
    UpdateOne(writer);
  }
  if (model_.size() > mostRows_) growing_ = false;
  if (model_.size() < 10) growing_ = true;
  ++done_;
}

void RandomEditor::UpdateOne(TableWriter& writer) {
  const RowId row = AnyRow();
  std::vector<Value> values = model_[row];
  std::vector<bool> changed(values.size());
  for (std::size_t i = 0; i < values.size(); ++i) {
    changed[i] = random_.Below(3) == 0 && !writer.Definition().columns[i].autonumber;
    if (changed[i]) values[i] = random_.For(writer.Definition().columns[i]);
  }
  writer.Update(row, values, changed);
  model_[row] = values;
}

RowId RandomEditor::AnyRow() {
  const auto after = model_.lower_bound(static_cast<RowId>(random_.Below(model_.rbegin()->first + 1)));
  return after->first;
}

}  // namespace jet::test
