// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <memory>

namespace runtime {
class FileLock;
}

// Allows one running program per program folder: an export empties the offline log, so no other program may append to
// it meanwhile. Locks the file spotrooster.lock in the folder of the local databases; the system releases the lock when
// the process ends, also after a crash.
class ProgramLock {
 public:
  // `dataFolder` is the path text of the folder with the local databases. Throws runtime::Error when another program
  // holds the lock. Where locking is impossible (read-only folder, file system without locks) it does nothing.
  explicit ProgramLock(const QString& dataFolder);
  ~ProgramLock();

 private:
  std::unique_ptr<runtime::FileLock> lock_;
};
