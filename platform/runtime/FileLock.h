#pragma once
#include <QString>

namespace runtime {

// A lock on a file that is made for it and stays behind empty. It belongs to this object, not to the process: a second
// one in the same process is refused like any other. It ends with the object, or with the process.
class FileLock {
 public:
  enum class State {
    Held,
    HeldByOther,
    NotPossible,  // the file cannot be made, or its file system has no locks
  };

  // Never waits. Path text. To read the file is enough, so that every user of a shared folder meets the lock.
  explicit FileLock(const QString& pathText);
  ~FileLock();
  FileLock(const FileLock&) = delete;
  FileLock& operator=(const FileLock&) = delete;

  State What() const { return state_; }

 private:
  int fd_ = -1;
  State state_ = State::NotPossible;
};

}  // namespace runtime
