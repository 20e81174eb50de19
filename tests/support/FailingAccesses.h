// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <limits>
#include <memory>

namespace testing_support {

// While this exists, accesses to the server database number `first` to `last` (from 1) fail: looks at its file, or, in
// a run on a server, what the program sends to the server, which cuts the connection before it arrives.
class FailingAccesses {
 public:
  explicit FailingAccesses(int first, int last = std::numeric_limits<int>::max());
  ~FailingAccesses();
  FailingAccesses(const FailingAccesses&) = delete;
  FailingAccesses& operator=(const FailingAccesses&) = delete;

 private:
  class OnFile;
  class OnConnection;
  std::unique_ptr<OnFile> onFile_;
  std::unique_ptr<OnConnection> onConnection_;
};

}  // namespace testing_support
