#pragma once
#include <QDateTime>
#include <QList>
#include <QString>

#include <functional>

// One dated copy of a database.
struct BackupFile {
  QString name;
  QDateTime moment;

  bool operator==(const BackupFile&) const = default;
};

// Which copies may go. Kept are the newest ten; of each of the last thirty days the newest; and the newest one that is
// whole, wherever it stands. `newestFirst` is sorted so; `isWhole` is asked only as far as needed, since it opens
// files.
QList<BackupFile> ExpiredBackups(const QList<BackupFile>& newestFirst, QDate today,
                                 const std::function<bool(const BackupFile&)>& isWhole);
