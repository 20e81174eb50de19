// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/database/Database.h"

#include <string>
#include <vector>

namespace jet {

// One thing that an integrity check noticed.
struct Finding {
  bool remark = false;  // odd but sound: seen in files that the original programs are content with
  std::string text;     // Dutch; names page and table where it has them

  // A line for people: remarks begin with "remark: ".
  std::string Line() const { return remark ? "remark: " + text : text; }
};

// Most findings that one check collects; one more tells that there are others.
constexpr std::size_t kMostFindings = 1000;

// Looks at every page, map, row, long value and index of the file, and rebuilds every index key from its row. Never
// changes the file. Problems come in the order in which they were met; a file without a problem is sound.
std::vector<Finding> CheckDatabase(Database& database);

// Whether one of the findings is a problem.
bool HasProblem(const std::vector<Finding>& findings);

}  // namespace jet
