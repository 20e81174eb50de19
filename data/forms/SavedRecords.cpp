// SPDX-License-Identifier: MIT
#include "data/forms/SavedRecords.h"

#include <utility>

namespace {

QList<qint32> savedRecords;

}  // namespace

void NoteSavedRecord(qint32 id) {
  savedRecords += id;
}

QList<qint32> TakeSavedRecords() {
  return std::exchange(savedRecords, {});
}
