#pragma once

#include "platform/jet/FileSystem.h"

#include <functional>
#include <memory>
#include <string>

namespace bench {

// The files of this computer, with every call counted, and the time told apart that waiting for the disk takes: syncs,
// and removing a file, which waits until the file system has written its own log.
class TimedFiles final : public jet::FileSystem {
 public:
  struct Spent {
    int calls = 0;
    int syncs = 0;   // of files and folders
    int writes = 0;  // of files
    double bytesWritten = 0;
    double waitedMilliseconds = 0;

    Spent& operator+=(const Spent& more);
  };

  // Since the last Forget.
  const Spent& Told() const { return spent_; }
  void Forget() { spent_ = {}; }

  int RawOpen(const Path& path, jet::OpenMode mode, std::unique_ptr<jet::File>* file) override;
  int RawIdentity(const Path& path, jet::FileIdentity* identity) override;
  int RawRename(const Path& from, const Path& to) override;
  int RawRemove(const Path& path) override;
  int RawSyncFolder(const Path& folder) override;
  int RawCopyPermissions(const Path& model, const Path& path) override;

 private:
  class CountedFile;
  jet::FileSystem& Counted();
  int Waiting(const std::function<int()>& call);

  Spent spent_;
};

}  // namespace bench
