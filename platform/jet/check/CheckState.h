// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/check/Check.h"
#include "platform/jet/pages/DataPage.h"
#include "platform/jet/pages/UsageMap.h"
#include "platform/jet/rows/StoredTable.h"
#include "platform/jet/values/Error.h"

#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace jet {

// What the parts of an integrity check share: the findings, and who claims which page.
class CheckState {
 public:
  CheckState(PageSource& pages, std::vector<Finding>& findings) : pages_(pages), findings_(findings) {}

  PageSource& Source() { return pages_; }

  void Problem(const std::string& text) { Add(false, text); }
  void Remark(const std::string& text) { Add(true, text); }
  void ProblemAt(std::uint32_t page, const std::string& what);

  // Everything added until the next call is about this table (empty = none).
  void SetTable(const std::string& name) { table_ = name; }
  // Put before a finding: "tabel 'X', " or nothing.
  std::string Where() const { return table_.empty() ? std::string() : "tabel '" + table_ + "', "; }

  // Notes that `page` belongs to `owner` (a text for people); a second owner is a problem, and false is returned.
  bool Claim(std::uint32_t page, const std::string& owner);
  // A page that holds rows of usage maps may serve several tables.
  void ClaimMapPage(std::uint32_t page);
  bool IsClaimed(std::uint32_t page) const { return claims_.count(page) != 0; }
  const std::unordered_map<std::uint32_t, std::string>& Claims() const { return claims_; }

  // Notes that a piece of a long value of `owner` lies on a page that no map gives to a field: many may lie there.
  void ClaimUnmapped(std::uint32_t page, const std::string& owner) { claims_.emplace(page, owner); }
  // Whether the file calls the page free; false where its map cannot be read.
  bool IsFree(std::uint32_t page);

  // Reads a map and claims the pages that it lives on. A damaged map is a problem and taken as empty.
  UsageMap ReadMap(RowId where, const std::string& what);

  // Runs `work`; damage that it meets becomes a problem.
  template <typename Work>
  void Guard(Work&& work) {
    try {
      work();
    } catch (const Error& error) {
      Note(error);
    }
  }
  // Damage becomes a problem, anything else goes on upwards.
  void Note(const Error& error);

 private:
  void Add(bool remark, const std::string& text);

  PageSource& pages_;
  std::vector<Finding>& findings_;
  std::string table_;
  std::unordered_map<std::uint32_t, std::string> claims_;
  std::unordered_map<RowId, std::string> maps_;
  std::optional<UsageMap> freePages_;
};

// Slots of a data page, their places and the page's own count of free bytes. Returns whether its rows can be looked
// at.
bool CheckDataPage(CheckState& state, const DataPage& page, std::uint32_t owner);

// The parts, each in its own file.
void CheckRows(CheckState& state, const StoredTable& table);
void CheckIndexes(CheckState& state, const StoredTable& table);

}  // namespace jet
