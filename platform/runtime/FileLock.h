// SPDX-License-Identifier: MIT
#pragma once

#include "platform/files/FileLock.h"

#include <QString>

namespace runtime {

// files::FileLock for a path text. The state is NotPossible when the path's drive or share is not mapped.
class FileLock {
 public:
  using State = files::FileLock::State;

  // Throws Error when the name is taken by something other than a regular file.
  explicit FileLock(const QString& pathText);

  State What() const { return state_; }

 private:
  std::unique_ptr<files::FileLock> lock_;
  State state_ = State::NotPossible;
};

}  // namespace runtime
