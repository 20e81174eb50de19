// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/JetFile.h"
#include "platform/dao/Storage.h"
#include "platform/jet/table/Table.h"

#include <array>
#include <deque>
#include <string>
#include <vector>

namespace dao {

// The columns that a cursor decodes, and the position of each field among them.
struct WantedColumns {
  explicit WantedColumns(const FieldMask& wanted);

  jet::ColumnSet columns;
  std::array<std::uint8_t, kMaxFields> places{};
};

// The values of a cursor's current row.
class JetCursor : public Cursor {
 public:
  explicit JetCursor(const FieldMask& wanted) : wanted_(wanted), mask_(wanted) {}
  ValueView Field(std::size_t field) const override;

 protected:
  virtual const std::vector<jet::Value>& Values() const = 0;
  void ForgetTexts() { texts_.clear(); }
  const WantedColumns& Wanted() const { return wanted_; }

 private:
  WantedColumns wanted_;
  FieldMask mask_;
  mutable std::deque<std::u16string> texts_;  // of values that are not stored as text
};

// Every row of a table. File and table must outlive it.
class JetScan : public JetCursor {
 public:
  JetScan(const JetFile& file, const jet::Table& table, const FieldMask& wanted)
      : JetCursor(wanted), file_(file), cursor_(file.WithUserErrors([&] { return table.Scan(Wanted().columns); })) {}

  bool Next() override;
  RowId Id() const override { return cursor_.Id(); }

 protected:
  const std::vector<jet::Value>& Values() const override { return cursor_.Values(); }

 private:
  const JetFile& file_;
  jet::TableCursor cursor_;
};

// The rows that an index references. File and table must outlive it.
class JetKeyScan : public JetCursor {
 public:
  JetKeyScan(const JetFile& file, const jet::Table& table, jet::KeyCursor cursor, const FieldMask& wanted)
      : JetCursor(wanted),
        file_(file),
        table_(table),
        cursor_(std::move(cursor)),
        row_(file.WithUserErrors([&] { return table.Fetcher(Wanted().columns); })) {}

  bool Next() override;
  RowId Id() const override { return cursor_.Id(); }

 protected:
  const std::vector<jet::Value>& Values() const override { return row_.Values(); }

 private:
  const JetFile& file_;
  const jet::Table& table_;
  jet::KeyCursor cursor_;
  jet::RowFetcher row_;
};

}  // namespace dao
