// SPDX-License-Identifier: MIT
#include "platform/jet/rows/RowLayout.h"

#include "platform/jet/values/Names.h"

#include <algorithm>

namespace jet {

namespace {

bool IsSameColumn(const StoredColumn& left, const StoredColumn& right) {
  const bool isSameKind = left.rawType == right.rawType && left.length == right.length &&
                          left.IsFixed() == right.IsFixed() && left.MayCompress() == right.MayCompress() &&
                          left.precision == right.precision && left.scale == right.scale;
  const bool isSamePlace = left.number == right.number && (left.IsFixed() ? left.fixedOffset == right.fixedOffset
                                                                          : left.variableIndex == right.variableIndex);
  return isSameKind && isSamePlace && !left.IsLong() && SameName(left.name, right.name);
}

}  // namespace

bool HaveSameRows(const StoredTable& left, const StoredTable& right) {
  return left.maxColumns == right.maxColumns && left.variableColumns == right.variableColumns &&
         std::ranges::equal(left.columns, right.columns, IsSameColumn);
}

}  // namespace jet
