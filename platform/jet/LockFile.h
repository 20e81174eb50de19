#pragma once

#include "platform/jet/FileSystem.h"
#include "platform/jet/Lock.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

namespace jet {

/// Who has a database open, as written in its .ldb file.
struct LockFileUser {
  std::string machine;
  std::string name;
};

/// The .ldb file beside a database, through which Jet programs and we see each other. As long as this lives, our entry
/// and user byte are there. Where the folder cannot be written, everything is quietly absent: then nobody can write the
/// database either.
///
/// Entry i (from 1) lies at (i-1)*64: 32 bytes machine, 32 bytes user, 8-bit, ended by 00. Its user holds a lock on
/// byte 0x10000000 + i. Only the lock proves anything; entries stay behind.
class LockFile {
 public:
  /// `database` is the .mdb file's path, `lock` that file's locks, where we mark ourselves as one of us.
  LockFile(FileSystem& files, const std::filesystem::path& database, Lock& lock);
  /// Gives up our entry, and removes the file when nobody else is in it.
  ~LockFile();
  LockFile(const LockFile&) = delete;
  LockFile& operator=(const LockFile&) = delete;

  /// Our number, 1 to 255; 0 when we have none.
  unsigned Number() const { return number_; }
  /// The entry of user `number`.
  LockFileUser UserAt(unsigned number);
  /// The number of a user that is no program of ours; nothing when there is none.
  std::optional<unsigned> ForeignUser();

 private:
  bool Enter();
  bool TakeNumber();
  void WriteEntry();

  FileSystem& files_;
  std::filesystem::path path_;
  Lock& lock_;
  std::unique_ptr<File> file_;
  unsigned number_ = 0;
};

/// This machine's name and the name of the user who runs the program, for the .ldb entry.
LockFileUser ThisUser();

}  // namespace jet
