// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>
#include <QVariant>

#include <vector>

namespace dao {

// All rows of a SELECT, one after the other; names.size() values per row.
struct ResultRows {
  QStringList names;
  std::vector<QVariant> values;
  int rowCount = 0;
};

}  // namespace dao
