// SPDX-License-Identifier: MIT
#pragma once

#include "platform/files/HookedFileSystem.h"

namespace bench {

// The files of this computer with every call counted, and with the time spent waiting for the disk: syncs, and removing
// a file, which waits until the file system has written its own log.
class TimedFiles final : public files::HookedFileSystem {
 public:
  struct Spent {
    int calls = 0;
    int syncs = 0;   // of files and folders
    int writes = 0;  // of files
    double bytesWritten = 0;
    double waitedMilliseconds = 0;

    Spent& operator+=(const Spent& more);
  };

  TimedFiles();

  // Since the last call of Forget.
  const Spent& TimeSpent() const { return spent_; }
  void Forget() { spent_ = {}; }

 private:
  std::int64_t Count(const files::FileCall& call, const Make& make);

  Spent spent_;
};

}  // namespace bench
