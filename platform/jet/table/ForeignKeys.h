// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/Transaction.h"
#include "platform/jet/rows/StoredTable.h"
#include "platform/jet/values/Value.h"

#include <string>
#include <vector>

namespace jet {

// Checks the enforced relations of one table, which are stored in its indexes. Refuses changes that would break a
// relation, and those that would require a cascade to another table. Never writes.
class ForeignKeys {
 public:
  ForeignKeys(Transaction& pages, const StoredTable& table);

  bool AreNone() const { return foreignKeys_.empty(); }
  // `values` in the order of `table.columns`. Throws Error (Relation) when a referenced row does not exist.
  void CheckReferences(const std::vector<Value>& values) const;
  // Throws Error (Relation) when rows reference the row with these values.
  void CheckNotReferenced(const std::vector<Value>& values) const;
  // Whether another table has a relation that references this one.
  bool IsReferencedElsewhere() const;
  // As CheckNotReferenced, but references from this table itself are allowed.
  void CheckNotReferencedElsewhere(const std::vector<Value>& values) const;
  // As CheckReferences and CheckNotReferenced, for relations whose fields change.
  void CheckChange(const std::vector<Value>& before, const std::vector<Value>& after) const;

 private:
  struct Relation {
    std::u16string name;
    bool isReferencedByOthers = false;
    bool cascades = false;
    std::vector<std::size_t> columns;  // positions in table.columns
    StoredTable partner;
    std::size_t partnerIndex = 0;
  };

  void RequireReferenced(const Relation& relation, const std::vector<Value>& values) const;
  void RequireNotReferenced(const Relation& relation, const std::vector<Value>& values, const char* doing) const;
  bool PartnerHas(const Relation& relation, const std::vector<Value>& values) const;

  bool IsReferencedByOthers(const Relation& relation) const {
    return relation.isReferencedByOthers && relation.partner.page != table_;
  }

  Transaction& pages_;
  std::uint32_t table_;
  std::vector<Relation> foreignKeys_;
};

}  // namespace jet
