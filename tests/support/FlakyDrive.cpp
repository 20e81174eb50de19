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

// The present state of the drive, and for how many more calls. Once gone it stays gone until it is held.
struct FlakyDrive::DriveState {
  enum Kind { Well, Slow, Failing, Gone };

  DriveState(QStringList roots, unsigned seed) : folders(std::move(roots)), random(seed) {}

  // The errno of a call on the path, or 0, possibly after a delay.
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

using DriveState = FlakyDrive::DriveState;

// A drive that is gone gives a program with an open file an error, not "no such file". Unlocking always succeeds: a
// server releases the locks of a client that is gone.
std::int64_t OnDrive(DriveState& state, const files::FileCall& call, const files::HookedFileSystem::Make& make) {
  if (call.kind == files::FileCall::Unlock) return make();
  return state.Next(QFile::decodeName(call.path.c_str())) != 0 ? -EIO : make();
}

int Look(DriveState& state, const QString& hostPath) {
  if (const int failure = state.Next(hostPath)) return failure;
  struct stat status {};
  return ::stat(QFile::encodeName(hostPath).constData(), &status) == 0 ? 0 : errno;
}

}  // namespace

FlakyDrive::FlakyDrive(const QStringList& folders, unsigned seed)
    : state_(std::make_shared<DriveState>(folders, seed)),
      files_(files::HostFileSystem(),
             [state = state_](files::FileCall& call, const files::HookedFileSystem::Make& make) {
               return OnDrive(*state, call, make);
             }),
      scope_(files_),
      looks_([state = state_](const QString& path) { return Look(*state, path); }) {}

FlakyDrive::~FlakyDrive() = default;

void FlakyDrive::Hold(bool well) {
  const std::lock_guard lock(state_->mutex);
  state_->held = well;
  state_->kind = DriveState::Well;
}

int FlakyDrive::Hindered() const {
  const std::lock_guard lock(state_->mutex);
  return state_->hindered;
}

}  // namespace testing_support
