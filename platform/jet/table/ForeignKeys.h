// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/Transaction.h"
#include "platform/jet/rows/StoredTable.h"
#include "platform/jet/values/Value.h"

#include <string>
#include <vector>

namespace jet {

// The enforced relations of one table, as its indexes tell them. Only looks; what would break a relation is refused,
// and so is what another engine would carry on to the other table.
class ForeignKeys {
 public:
  ForeignKeys(Transaction& pages, const StoredTable& table);

  bool AreNone() const { return foreignKeys_.empty(); }
  // `values` in the order of `table.columns`. An Error when the row names a row elsewhere that is not there.
  void CheckReferences(const std::vector<Value>& values) const;
  // An Error when rows elsewhere name the row with these values.
  void CheckNotReferenced(const std::vector<Value>& values) const;
  // Whether rows of other tables may name rows of this one.
  bool IsReferencedElsewhere() const;
  // As CheckNotReferenced, but rows of this very table may name the row.
  void CheckNotReferencedElsewhere(const std::vector<Value>& values) const;
  // As CheckReferences and CheckNotReferenced, for the relations whose fields are changed.
  void CheckChange(const std::vector<Value>& before, const std::vector<Value>& after) const;

 private:
  struct Relation {
    std::u16string name;
    bool isReferencedByOthers = false;
    bool cascades = false;
    std::vector<std::size_t> columns;  // places in table.columns
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
