#pragma once

#include "platform/files/FileSystem.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace files::test {

/// The ways in which one call can go wrong.
enum class Fault { None, Error, DiskFull, Interrupted, ShortCount, Dead };

/// A file system over another that counts its calls and lets a chosen one fail. `Dead` is a process that is killed: the
/// chosen call and all after it do nothing and fail. It can keep a list of what was changed, for replaying it in part.
class FaultyFiles final : public FileSystem {
 public:
  explicit FaultyFiles(FileSystem& real) : real_(real) {}

  /// The call with this number (from 0, counted from now on) fails.
  void FailAt(int call, Fault fault);
  void FailNever() { fault_ = Fault::None; }
  bool Failed() const { return failed_; }

  /// One change, in the order in which they were made.
  struct Change {
    enum Kind { Write, Truncate, Sync, Create, Remove, Rename, SyncFolder } kind;
    Path path;
    std::uint64_t offset = 0;
    Bytes bytes;
    Path other;
  };
  void Record(std::vector<Change>* changes) { changes_ = changes; }

  int RawOpen(const Path& path, OpenMode mode, std::unique_ptr<File>* file) override;
  int RawIdentity(const Path& path, FileIdentity* identity) override;
  int RawRename(const Path& from, const Path& to) override;
  int RawRemove(const Path& path) override;
  int RawSyncFolder(const Path& folder) override;
  int RawCopyPermissions(const Path& model, const Path& path) override;

  /// What the next call shall answer instead of doing its work: 0 = do it. `counts`: a call that can do less than
  /// asked.
  int Next(bool counts = false, bool* shortened = nullptr);
  void Note(Change change);

 private:
  FileSystem& real_;
  int calls_ = 0;
  int failing_ = -1;
  Fault fault_ = Fault::None;
  bool failed_ = false;
  std::vector<Change>* changes_ = nullptr;
};

}  // namespace files::test
