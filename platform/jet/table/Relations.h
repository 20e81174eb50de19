#pragma once

#include "platform/jet/pages/Transaction.h"
#include "platform/jet/rows/TableDef.h"
#include "platform/jet/values/Value.h"

#include <string>
#include <vector>

namespace jet {

/// The enforced relations of one table, as its indexes tell them. Only looks; what would break a relation is refused,
/// and so is what another engine would carry on to the other table.
class Relations {
 public:
  Relations(Transaction& pages, const TableDef& table);

  bool AreNone() const { return relations_.empty(); }
  /// `values` in the order of `table.columns`. An Error when the row names a row elsewhere that is not there.
  void CheckNames(const std::vector<Value>& values) const;
  /// An Error when rows elsewhere name the row with these values.
  void CheckNotNamed(const std::vector<Value>& values) const;
  /// Whether rows of other tables may name rows of this one.
  bool AreRowsNamedElsewhere() const;
  /// As CheckNotNamed, but rows of this very table may name the row.
  void CheckNotNamedElsewhere(const std::vector<Value>& values) const;
  /// As CheckNames and CheckNotNamed, for the relations whose fields are changed.
  void CheckChange(const std::vector<Value>& before, const std::vector<Value>& after) const;

 private:
  struct Relation {
    std::u16string name;
    bool isNamedByOthers = false;
    bool cascades = false;
    std::vector<std::size_t> columns;  ///< places in table.columns
    TableDef partner;
    std::size_t partnerIndex = 0;
  };

  void RequireNamed(const Relation& relation, const std::vector<Value>& values) const;
  void RequireNotNamed(const Relation& relation, const std::vector<Value>& values, const char* doing) const;
  bool PartnerHas(const Relation& relation, const std::vector<Value>& values) const;

  bool IsNamedElsewhere(const Relation& relation) const {
    return relation.isNamedByOthers && relation.partner.page != table_;
  }

  Transaction& pages_;
  std::uint32_t table_;
  std::vector<Relation> relations_;
};

}  // namespace jet
