// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QList>
#include <QString>

#include <functional>

// One dated copy of a database.
struct BackupFile {
  QString name;
  QDateTime moment;  // what the clock said when it was made
  QDateTime made;    // tells the order in which the copies were made, whatever the clock said

  bool operator==(const BackupFile&) const = default;
};

// Which copies may go. Kept are the newest ten; the newest of each day, for the last thirty days of which there is one
// and not longer than thirty days; and the newest one that is whole, wherever it stands. Days are those of `moment`, so
// that a copy of a wrong date costs no other; all else goes by `made`. `newestFirst` is sorted by it; `isWhole` is
// asked only as far as needed, since it opens files.
QList<BackupFile> ExpiredBackups(const QList<BackupFile>& newestFirst, QDate today,
                                 const std::function<bool(const BackupFile&)>& isWhole);
