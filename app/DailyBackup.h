// SPDX-License-Identifier: MIT
#pragma once

#include "data/forms/LatestTask.h"

#include <QDateTime>
#include <QObject>
#include <QString>

// Copies the server database once a day, in the background. The first program that may write the database makes the
// copy for all; the others find it there.
class DailyBackup : public QObject {
  Q_OBJECT

 public:
  DailyBackup();

  // Makes the copy of today, if the station is online and there is none. After a failure it tries again when called
  // ten minutes later.
  void Start();
  // Why the last attempt made no copy; empty when it succeeded.
  QString Problem() const { return problem_; }

 Q_SIGNALS:
  void finished();

 private:
  bool IsDue(const QDateTime& now) const;
  void Finish(const QString& problem);

  QString path_;         // of the last attempt
  QDateTime attempted_;  // its time
  QString problem_;
  LatestTask task_;
};
