// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/Plan.h"
#include "platform/dao/Storage.h"

#include <QByteArray>
#include <QString>

#include <sqlite3.h>

#include <exception>
#include <memory>
#include <vector>

namespace dao {

// The tables that one statement names, as the SQL engine sees them: each is there without having been created, as the
// one table of a module of its name. What the engine was told of a table's fields it keeps for the next statement,
// which often names the same tables; everything else ends with the statement.
class VirtualTables {
 public:
  // The connection has no modules of others.
  explicit VirtualTables(sqlite3* connection) : connection_(connection) {}
  ~VirtualTables() = default;
  VirtualTables(const VirtualTables&) = delete;
  VirtualTables& operator=(const VirtualTables&) = delete;

  // Makes a table known under a name. Its place counts from 0 in the order of the calls.
  void Add(const QString& name, std::unique_ptr<Table> table);
  // All were added: the engine forgets the tables of the statement before that are not among them.
  void DropUnused();
  // The statement is over, and what was compiled for it is gone.
  void EndStatement();

  Table& At(std::size_t place) { return *entries_[place]->use.table; }

  // An INSERT gives these fields of the table; the others get their default.
  void SetGivenFields(std::size_t place, FieldMask given) { entries_[place]->use.given = given; }

  // The rows that a DELETE named go together, once all are known: the engine does not look at the table in between.
  void DeleteCollected(std::size_t place);

  // Throws what a table threw under the engine, if anything: no exception crosses the engine's C code.
  void RethrowFailure() const;

  // Whether it is this that tells the engine about a table now, and no statement that asks for something.
  bool IsDeclaring() const { return isDeclaring_; }

  // For the callbacks.
  struct Use {  // by one statement
    std::unique_ptr<Table> table;
    FieldMask given;
    std::vector<RowId> named;  // by a DELETE
    std::vector<Plan> plans;   // what the engine was offered while it compiled; it names the one chosen by its place
  };
  struct Entry {
    VirtualTables* all;
    QByteArray name;
    QByteArray declaration;
    Use use;
  };
  int Declare(const Entry& entry);
  void KeepFailure(std::exception_ptr failure) { failure_ = std::move(failure); }

 private:
  using Entries = std::vector<std::unique_ptr<Entry>>;  // the engine points to each

  std::unique_ptr<Entry> TakeKept(const QByteArray& name, const QByteArray& declaration);

  sqlite3* connection_;
  Entries entries_;  // of this statement
  Entries kept_;     // of the one before
  bool isDeclaring_ = false;
  std::exception_ptr failure_;
};

// The type that a field has in the engine, by which a result column tells what it holds.
const char* DeclaredType(FieldType type);

}  // namespace dao
