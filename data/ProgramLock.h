// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <memory>

namespace runtime {
class FileLock;
}

// One running program per program folder: an export empties the offline log, so nobody else may fill it meanwhile. The
// lock stands on the file spotrooster.lock beside the local databases; it goes with the process that holds it, however
// that ends.
class ProgramLock {
 public:
  // Path text of the folder that holds the local databases. Error when another program has the lock; where no lock can
  // be had (a read-only folder, a file system without locks) the program goes on without.
  explicit ProgramLock(const QString& dataFolder);
  ~ProgramLock();

 private:
  std::unique_ptr<runtime::FileLock> lock_;
};
