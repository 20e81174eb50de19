// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/FileSystemScope.h"
#include "platform/files/HookedFileSystem.h"
#include "platform/runtime/Probe.h"

#include <QString>

#include <memory>

namespace testing_support {

// An unreliable network drive: while it exists, checks, reads, writes and locks below some folders are slow or fail, at
// random, for a few calls at a time, or find nothing at all from then on. It never changes the files themselves.
class FlakyDrive {
 public:
  // Host paths of the folders; a seed for the random numbers.
  FlakyDrive(const QStringList& folders, unsigned seed);
  ~FlakyDrive();
  FlakyDrive(const FlakyDrive&) = delete;
  FlakyDrive& operator=(const FlakyDrive&) = delete;

  // The drive works while it is held, so that a test can inspect the files.
  void Hold(bool well);
  // Number of calls that were made to fail or delayed.
  int Hindered() const;

  struct DriveState;

 private:
  std::shared_ptr<DriveState> state_;  // also of helper threads that outlive the drive
  files::HookedFileSystem files_;
  dao::FileSystemScope scope_;
  runtime::ProbeLookScope looks_;
};

}  // namespace testing_support
