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

// Which Storages this process has, so that all openings of a file by one thread share one. Any thread may ask; it owns
// nothing: a Storage lives as long as who opened it.
class StorageRegistry {
 public:
  using Maker = std::function<std::shared_ptr<Storage>()>;

  // This thread's Storage of the file `identity` of `files`, or what `make` makes. Throws what `make` throws.
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
