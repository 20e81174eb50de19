// SPDX-License-Identifier: MIT
#include "data/BackupRetention.h"

#include <QSet>

#include <algorithm>

namespace {
constexpr qsizetype kNewest = 3;
constexpr qsizetype kHours = 10;
constexpr qint64 kDays = 30;

// Adds the value and returns whether it is a new one among the first `most`.
template <class T>
bool IsFirstOf(QSet<T>& seen, const T& value, qsizetype most) {
  const bool isNew = !seen.contains(value);
  seen.insert(value);
  return isNew && seen.size() <= most;
}

}  // namespace

QList<BackupFile> ExpiredBackups(const QList<BackupFile>& newestFirst, QDate today,
                                 const std::function<bool(const BackupFile&)>& isComplete) {
  QList<BackupFile> expired;
  QSet<QDateTime> hours;
  QSet<QDate> days;
  for (qsizetype at = 0; at < newestFirst.size(); ++at) {
    const QDateTime& moment = newestFirst[at].moment;
    const bool isHourly = IsFirstOf(hours, QDateTime(moment.date(), QTime(moment.time().hour(), 0)), kHours);
    const bool isDaily = IsFirstOf(days, moment.date(), kDays) && newestFirst[at].made.date().daysTo(today) < kDays;
    if (at >= kNewest && !isHourly && !isDaily) expired += newestFirst[at];
  }
  if (expired.isEmpty()) return expired;
  const auto complete = std::find_if(newestFirst.begin(), newestFirst.end(), isComplete);
  if (complete != newestFirst.end()) expired.removeAll(*complete);
  return expired;
}
