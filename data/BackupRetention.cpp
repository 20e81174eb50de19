// SPDX-License-Identifier: MIT
#include "data/BackupRetention.h"

#include <QSet>

#include <algorithm>

namespace {
constexpr qsizetype kNewest = 10;
constexpr qint64 kDays = 30;
}  // namespace

QList<BackupFile> ExpiredBackups(const QList<BackupFile>& newestFirst, QDate today,
                                 const std::function<bool(const BackupFile&)>& isComplete) {
  QList<BackupFile> expired;
  QSet<QDate> days;
  for (qsizetype at = 0; at < newestFirst.size(); ++at) {
    const QDate day = newestFirst[at].moment.date();
    const bool isNewestOfDay = !days.contains(day);
    days.insert(day);
    const bool isDaily = isNewestOfDay && days.size() <= kDays && newestFirst[at].made.date().daysTo(today) < kDays;
    if (at >= kNewest && !isDaily) expired += newestFirst[at];
  }
  if (expired.isEmpty()) return expired;
  const auto complete = std::find_if(newestFirst.begin(), newestFirst.end(), isComplete);
  if (complete != newestFirst.end()) expired.removeAll(*complete);
  return expired;
}
