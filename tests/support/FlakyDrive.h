// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/FileSystemScope.h"
#include "platform/files/HookedFileSystem.h"
#include "platform/runtime/Probe.h"

#include <QString>

#include <memory>

namespace testing_support {

// A network drive on which nobody can count: while it lives, looks at it, reads, writes and locks under some folders
// are slow or fail, by chance, for a few calls at a time, or find nothing at all from then on. What lies there is never
// touched by it.
class FlakyDrive {
 public:
  // Host paths of the folders; a seed for the chances.
  FlakyDrive(const QStringList& folders, unsigned seed);
  ~FlakyDrive();
  FlakyDrive(const FlakyDrive&) = delete;
  FlakyDrive& operator=(const FlakyDrive&) = delete;

  // Well for as long as it is held, so that a test can look at what is there.
  void Hold(bool well);
  // How many calls were hindered.
  int Hindered() const;

  struct Weather;

 private:
  std::shared_ptr<Weather> weather_;  // also of helper threads that outlive the drive
  files::HookedFileSystem files_;
  dao::FileSystemScope scope_;
  runtime::ProbeLookScope looks_;
};

}  // namespace testing_support
