// SPDX-License-Identifier: MIT
#pragma once

#include "platform/files/HookedFileSystem.h"

#include <vector>

namespace files::test {

// The ways in which a call can fail.
enum class Fault { None, Error, DiskFull, Interrupted, ShortCount, Dead };

// Wraps a file system, counts its calls and makes a chosen one fail. `Dead` simulates a killed process: the chosen call
// and all after it do nothing and fail. Can record all changes, so that a test can replay a part of them.
class FaultyFiles final : public HookedFileSystem {
 public:
  explicit FaultyFiles(FileSystem& real);

  // The call with this number (from 0, counted from now on) fails.
  void FailAt(int call, Fault fault);
  void FailNever() { fault_ = Fault::None; }
  bool Failed() const { return failed_; }

  // One change, in the order in which they were made.
  struct Change {
    enum Kind { Write, Truncate, Sync, Create, Remove, Rename, SyncFolder } kind;
    Path path;
    std::uint64_t offset = 0;
    Bytes bytes;
    Path other;
  };
  void Record(std::vector<Change>* changes) { changes_ = changes; }

 private:
  std::int64_t Around(FileCall& call, const Make& make);
  // The errno with which the next call fails; 0 when it is made, possibly with half of its bytes.
  int Next(FileCall& call);
  void Note(const FileCall& call);

  FileSystem& real_;
  int calls_ = 0;
  int failing_ = -1;
  Fault fault_ = Fault::None;
  bool failed_ = false;
  std::vector<Change>* changes_ = nullptr;
};

}  // namespace files::test
