// SPDX-License-Identifier: MIT
#pragma once

#include "export/playout/BlockPlan.h"

#include <QDate>

#include <vector>

// What happens on one day, by the records. IDs are in the order of the spots and blocks given.
struct DayPlan {
  QDate date;
  std::vector<qint32> running;      // item-spots that run on this day, as IsRunning counts them for today
  std::vector<qint32> begins;       // of these, the ones whose first day this is
  std::vector<qint32> ends;         // of these, the ones whose last day this is
  std::vector<qint32> withoutFile;  // item-spots that would run if their file were there
  std::vector<qint32> silent;       // active blocks that play nothing at any hour of the day
};

// The plans of `days` days from `first` on. `lookUp` says which files are there. A block filled by file name counts as
// silent only when its name pattern gives no name: the file of a day to come may still be made.
std::vector<DayPlan> PlanDays(const std::vector<BlockSpot>& spots, const std::vector<Block>& blocks, QDate first,
                              int days, const LookUpFile& lookUp);
