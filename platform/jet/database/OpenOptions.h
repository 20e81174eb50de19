// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/PageSource.h"
#include "platform/jet/storage/WaitRule.h"

#include <string>

namespace jet {

struct OpenOptions {
  std::u16string password;                 // for a file with a password
  std::size_t cachedPages = kCachedPages;  // cache size in pages of 4096 bytes
  bool writable = false;                   // if false, nothing is written, not even a lock file
  WaitRule wait = WaitRule::Real();
};

}  // namespace jet
