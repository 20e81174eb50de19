// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QList>
#include <QString>

#include <functional>

// One dated copy of a database.
struct BackupFile {
  QString name;
  QDateTime moment;  // the clock's time when it was made, from its name
  QDateTime made;    // its modification time: increases with every copy, even when the clock was set back
  qint64 size = 0;   // bytes

  bool operator==(const BackupFile&) const = default;
};

// Returns the copies that may be deleted. These are kept: the newest three; the newest of each hour, for the last ten
// hours that have a copy, so that many copies within minutes do not displace all earlier ones; the newest of each day,
// for the last thirty days that have a copy, up to an age of thirty days; and the newest complete copy, whatever its
// age. Hours and days are counted by `moment`, so that a copy with a wrong date displaces no other; order and age use
// `made`. `newestFirst` must be sorted by `made`. `isComplete` opens files and is called only as often as needed.
QList<BackupFile> ExpiredBackups(const QList<BackupFile>& newestFirst, QDate today,
                                 const std::function<bool(const BackupFile&)>& isComplete);
