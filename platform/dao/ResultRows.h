// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>
#include <QVariant>

#include <vector>

namespace dao {

// All rows of a SELECT, row by row; names.size() values a row.
struct ResultRows {
  QStringList names;
  std::vector<QVariant> values;
  int rowCount = 0;
};

}  // namespace dao
