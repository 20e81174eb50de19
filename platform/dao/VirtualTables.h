// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/Plan.h"
#include "platform/dao/Storage.h"

#include <QByteArray>
#include <QString>

#include <sqlite3.h>

#include <exception>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace dao {

// The tables of one statement as eponymous virtual tables of SQLite: each has a module of its name. Declarations are
// kept for the next statement, which often uses the same tables; everything else ends with the statement.
class VirtualTables {
 public:
  // The connection must have no other modules.
  explicit VirtualTables(sqlite3* connection) : connection_(connection) {}
  ~VirtualTables() = default;
  VirtualTables(const VirtualTables&) = delete;
  VirtualTables& operator=(const VirtualTables&) = delete;

  // Adds a table under a name. Its place counts from 0 in the order of the calls.
  void Add(const QString& name, std::unique_ptr<Table> table);
  // After the last Add: drops the tables of the previous statement that were not added again.
  void DropUnused();
  // After the statement, when its compiled form is finalized.
  void EndStatement();

  Table& At(std::size_t place) { return *entries_[place]->use.table; }

  // The fields that an INSERT gives; the others get their default.
  void SetGivenFields(std::size_t place, FieldMask given) { entries_[place]->use.given = given; }

  // The statement reads this table once, and no other.
  void SetReadOnce(std::size_t place) { entries_[place]->use.readOnce = true; }

  // The statement, which reads this table once, is only about rows with this text.
  void SetSought(std::size_t place, TextOfField sought) { entries_[place]->use.sought = std::move(sought); }

  // Completes the changes of a statement: rows to delete and index entries of new rows are collected, because SQLite
  // does not read the table in between.
  void FinishChanges(std::size_t place);

  // Rethrows the exception of a table in a callback, if any: exceptions must not cross SQLite's C code.
  void RethrowFailure() const;

  // True while declaring a table: the authorizer must then allow everything.
  bool IsDeclaring() const { return isDeclaring_; }

  // For the callbacks.
  struct Use {  // by one statement
    std::unique_ptr<Table> table;
    FieldMask given;
    bool readOnce = false;
    std::optional<TextOfField> sought;
    std::vector<RowId> toDelete;  // collected by a DELETE
    std::vector<Plan> plans;      // offered while SQLite compiled; idxNum is the index of the chosen one
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
  using Entries = std::vector<std::unique_ptr<Entry>>;  // SQLite has pointers to the entries

  std::unique_ptr<Entry> TakeKept(const QByteArray& name, const QByteArray& declaration);

  sqlite3* connection_;
  Entries entries_;  // of this statement
  Entries kept_;     // of the previous one
  bool isDeclaring_ = false;
  std::exception_ptr failure_;
};

// The declared type of a field in SQLite, from which ResultColumn derives the type of its values.
const char* DeclaredType(FieldType type);

}  // namespace dao
