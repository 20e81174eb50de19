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

// State shared by the parts of an integrity check: findings and page owners.
class CheckState {
 public:
  CheckState(PageSource& pages, std::vector<Finding>& findings) : pages_(pages), findings_(findings) {}

  PageSource& Source() { return pages_; }

  void Problem(const std::string& text) { Add(false, text); }
  void Remark(const std::string& text) { Add(true, text); }
  void ProblemAt(std::uint32_t page, const std::string& what);

  // Sets the table for the following findings (empty = none).
  void SetTable(const std::string& name) { table_ = name; }
  // Prefix of a finding: "tabel 'X', " or empty.
  std::string Where() const { return table_.empty() ? std::string() : "tabel '" + table_ + "', "; }

  // Records that `page` belongs to `owner` (a text for messages). A second owner is a problem; then returns false.
  bool Claim(std::uint32_t page, const std::string& owner);
  // A page that holds rows of usage maps may serve several tables.
  void ClaimMapPage(std::uint32_t page);
  bool IsClaimed(std::uint32_t page) const { return claims_.count(page) != 0; }
  const std::unordered_map<std::uint32_t, std::string>& Claims() const { return claims_; }

  // Records a page with pieces of long values of `owner` that is in no map of a field. May be called several times for
  // one page.
  void ClaimUnmapped(std::uint32_t page, const std::string& owner) { claims_.emplace(page, owner); }
  // Whether the file marks the page as free; false when the map is unreadable.
  bool IsFree(std::uint32_t page);

  // Reads a map and claims its pages. A damaged map is a problem and treated as empty.
  UsageMap ReadMap(RowId where, const std::string& what);

  // Runs `work`; a Damaged error from it becomes a problem.
  template <typename Work>
  void Guard(Work&& work) {
    try {
      work();
    } catch (const Error& error) {
      Note(error);
    }
  }
  // Records a Damaged error as a problem; rethrows any other.
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

// Checks slots, their offsets and the page's count of free bytes. Returns whether its rows are readable.
bool CheckDataPage(CheckState& state, const DataPage& page, std::uint32_t owner);

// The parts, in a file each.
void CheckRows(CheckState& state, const StoredTable& table);
void CheckIndexes(CheckState& state, const StoredTable& table);

}  // namespace jet
