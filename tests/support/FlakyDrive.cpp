// SPDX-License-Identifier: MIT
#include "tests/support/FlakyDrive.h"

#include <QFile>
#include <QStringList>

#include <sys/stat.h>

#include <cerrno>
#include <chrono>
#include <mutex>
#include <random>
#include <string>
#include <thread>

namespace testing_support {

// How the drive is at present, and for how many calls yet. Once gone it stays so until it is held.
struct FlakyDrive::Weather {
  enum Kind { Well, Slow, Failing, Gone };

  Weather(QStringList roots, unsigned seed) : folders(std::move(roots)), random(seed) {}

  // The errno with which a call on the path ends, or 0 after a while.
  int Next(const QString& hostPath) {
    bool slow = false;
    {
      const std::lock_guard lock(mutex);
      if (held || !IsOn(hostPath)) return 0;
      if (kind != Gone && left-- <= 0) Turn();
      if (kind == Well) return 0;
      ++hindered;
      if (kind != Slow) return kind == Gone ? ENOENT : EIO;
      slow = true;
    }
    if (slow) std::this_thread::sleep_for(std::chrono::milliseconds(1));
    return 0;
  }

  bool IsOn(const QString& hostPath) const {
    for (const QString& folder : folders) {
      if (hostPath == folder || hostPath.startsWith(folder + u'/')) return true;
    }
    return false;
  }

  void Turn() {
    kind = random() % 3 != 0 ? Well : static_cast<Kind>(1 + random() % 3);
    left = static_cast<int>(random() % (kind == Well ? 400 : 12));
  }

  QStringList folders;
  std::mt19937 random;
  std::mutex mutex;
  Kind kind = Well;
  int left = 0;
  int hindered = 0;
  bool held = false;
};

namespace {

using Weather = FlakyDrive::Weather;

// A drive that is gone gives a program that has a file open there an error, not "no such file". Giving up a lock always
// succeeds: a server takes back what belongs to a client that is away.
std::int64_t OnDrive(Weather& weather, const files::FileCall& call, const files::HookedFileSystem::Make& make) {
  if (call.kind == files::FileCall::Unlock) return make();
  return weather.Next(QFile::decodeName(call.path.c_str())) != 0 ? -EIO : make();
}

int Look(Weather& weather, const QString& hostPath) {
  if (const int failure = weather.Next(hostPath)) return failure;
  struct stat status {};
  return ::stat(QFile::encodeName(hostPath).constData(), &status) == 0 ? 0 : errno;
}

}  // namespace

FlakyDrive::FlakyDrive(const QStringList& folders, unsigned seed)
    : weather_(std::make_shared<Weather>(folders, seed)),
      files_(files::HostFileSystem(),
             [weather = weather_](files::FileCall& call, const files::HookedFileSystem::Make& make) {
               return OnDrive(*weather, call, make);
             }),
      scope_(files_),
      looks_([weather = weather_](const QString& path) { return Look(*weather, path); }) {}

FlakyDrive::~FlakyDrive() = default;

void FlakyDrive::Hold(bool well) {
  const std::lock_guard lock(weather_->mutex);
  weather_->held = well;
  weather_->kind = Weather::Well;
}

int FlakyDrive::Hindered() const {
  const std::lock_guard lock(weather_->mutex);
  return weather_->hindered;
}

}  // namespace testing_support
