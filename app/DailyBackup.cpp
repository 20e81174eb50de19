// SPDX-License-Identifier: MIT
#include "app/DailyBackup.h"

#include "data/Backup.h"
#include "data/Globals.h"
#include "data/SettingsFile.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/Error.h"

namespace {
constexpr qint64 kRetryAfter = 600;  // seconds
}

DailyBackup::DailyBackup() : task_(this) {}

bool DailyBackup::IsDue(const QDateTime& now) const {
  if (path_ != global.serverDatabasePath || attempted_.date() != now.date()) return true;
  return !problem_.isEmpty() && attempted_.secsTo(now) >= kRetryAfter;
}

void DailyBackup::Start() {
  const QDateTime now = runtime::Now();
  if (!global.online || !IsDue(now)) return;
  path_ = global.serverDatabasePath;
  attempted_ = now;
  problem_.clear();
  task_.Send([this, path = path_, now, settings = SettingsFile().Path()](const LatestTask::Token& token) {
    QString problem;
    try {
      if (BackupsEnabled(settings)) BackUpDaily(path, now);
    } catch (const runtime::Error& error) {
      problem = error.Description();
    }
    token.Post([this, problem] { Finish(problem); });
  });
}

void DailyBackup::Finish(const QString& problem) {
  problem_ = problem;
  Q_EMIT finished();
}
