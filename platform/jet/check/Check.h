// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace jet {

class Database;

// One finding of an integrity check.
struct Finding {
  bool remark = false;  // unusual but sound: seen in files that the original programs accept
  std::string text;     // Dutch; with page and table where known

  // The text for output, with "opmerking: " before remarks.
  std::string Line() const { return remark ? "opmerking: " + text : text; }
};

// Most findings that one check collects; one further finding says that there are more.
constexpr std::size_t kMaxFindings = 1000;

// Checks every page, map, row, long value and index of the file, and compares every index key with its row. Never
// changes the file. Returns findings in the order of detection; a file without a problem is sound.
std::vector<Finding> CheckDatabase(Database& database);

// Whether any finding is not just a remark.
bool HasProblem(const std::vector<Finding>& findings);

}  // namespace jet
