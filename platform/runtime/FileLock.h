// SPDX-License-Identifier: MIT
#pragma once

#include "platform/files/FileLock.h"

#include <QString>

namespace runtime {

// files::FileLock for a path text. A path text that leads nowhere is NotPossible.
class FileLock {
 public:
  using State = files::FileLock::State;

  // Error when something else than a regular file has that name.
  explicit FileLock(const QString& pathText);

  State What() const { return state_; }

 private:
  std::unique_ptr<files::FileLock> lock_;
  State state_ = State::NotPossible;
};

}  // namespace runtime
