// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/Files.h"

#include <QString>

#include <memory>

namespace bench {

// What all rows of a ChangedTable hold together.
struct Totals {
  qint64 rows = 0;
  qint64 ids = 0;
  qint64 lengths = 0;
  qint64 days = 0;

  bool operator==(const Totals&) const = default;
};

// A table of item-spots in a file of its own, with a key on ID and an index on StartDatum, both changed by every
// change. Each change is a transaction of its own, durable when the call returns.
class ChangedTable {
 public:
  virtual ~ChangedTable() = default;
  virtual QString Name() const = 0;
  virtual QString Path() const = 0;

  // The rows 1 to `rows`, in one transaction.
  virtual void Fill(int rows) = 0;
  virtual void Insert(int id) = 0;
  // Gives the row another name, length and day, which depend on `version`.
  virtual void Update(int id, int version) = 0;
  virtual void Delete(int id) = 0;
  virtual Totals Read() = 0;
};

// By SQL, each statement through an opening of its own, as the planner does it: what the thread opened last is kept,
// and its files are those of a dao::FileSystemScope.
std::unique_ptr<ChangedTable> TableOfDao(const QString& folder);
// By the library below the SQL.
std::unique_ptr<ChangedTable> TableOfJet(const QString& folder, jet::FileSystem& files);
// Rollback journal, synchronous=EXTRA.
std::unique_ptr<ChangedTable> TableOfSqlite(const QString& folder);

}  // namespace bench
