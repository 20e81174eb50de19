// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/Files.h"

#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace jet {

class Storage;

// The Storages of this process, so that all openings of a file by one thread share one. Thread-safe. Holds weak
// references only.
class StorageRegistry {
 public:
  using Maker = std::function<std::shared_ptr<Storage>()>;

  // This thread's Storage of the file `identity` of `files`, or a new one from `make`. Throws what `make` throws.
  std::shared_ptr<Storage> Find(FileSystem& files, FileIdentity identity, bool readOnly, const Maker& make);

 private:
  struct Entry {
    FileSystem* files;
    std::thread::id thread;
    bool readOnly;
    std::weak_ptr<Storage> store;
  };
  std::mutex mutex_;
  std::vector<Entry> entries_;
};

}  // namespace jet
