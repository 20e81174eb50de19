// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/Files.h"

#include <QString>

#include <memory>

namespace bench {

// The total over all rows of a ChangedTable.
struct Totals {
  qint64 rows = 0;
  qint64 ids = 0;
  qint64 lengths = 0;
  qint64 days = 0;

  bool operator==(const Totals&) const = default;
};

// A table of item-spots in its own file, with a key on ID and an index on StartDatum, both updated by every change.
// Each change is its own transaction, durable when the call returns.
class ChangedTable {
 public:
  virtual ~ChangedTable() = default;
  virtual QString Name() const = 0;
  virtual QString Path() const = 0;

  // Inserts the rows 1 to `rows` in one transaction.
  virtual void Fill(int rows) = 0;
  virtual void Insert(int id) = 0;
  // Gives the row a new name, length and day that depend on `version`.
  virtual void Update(int id, int version) = 0;
  virtual void Delete(int id) = 0;
  virtual Totals Read() = 0;
};

// By SQL, opening the database for each statement as the planner does: the thread keeps the last opened file, and its
// files are those of a dao::FileSystemScope.
std::unique_ptr<ChangedTable> TableOfDao(const QString& folder);
// By the library below SQL.
std::unique_ptr<ChangedTable> TableOfJet(const QString& folder, jet::FileSystem& files);
// Rollback journal, synchronous=EXTRA.
std::unique_ptr<ChangedTable> TableOfSqlite(const QString& folder);

}  // namespace bench
