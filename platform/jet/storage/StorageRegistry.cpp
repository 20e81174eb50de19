// SPDX-License-Identifier: MIT
#include "platform/jet/storage/StorageRegistry.h"

#include "platform/jet/storage/Storage.h"

namespace jet {

std::shared_ptr<Storage> StorageRegistry::Find(FileSystem& files, FileIdentity identity, bool readOnly,
                                               const Maker& make) {
  const std::lock_guard guard(mutex_);
  std::erase_if(entries_, [](const Entry& entry) { return entry.store.expired(); });
  for (const Entry& entry : entries_) {
    auto store = entry.store.lock();
    if (store == nullptr || entry.files != &files || entry.thread != std::this_thread::get_id()) continue;
    if (entry.readOnly == readOnly && store->Identity() == identity) return store;
  }
  auto store = make();
  entries_.push_back({&files, std::this_thread::get_id(), readOnly, store});
  return store;
}

}  // namespace jet
