// SPDX-License-Identifier: MIT
#pragma once

#include <QTemporaryDir>

namespace testing_support {

// This process, and those it starts, keep what belongs to a user (settings, caches) in a folder that goes with this
// object: never in the home of whoever runs the tests.
class OwnUserFolders {
 public:
  OwnUserFolders();

 private:
  QTemporaryDir folder_;
};

}  // namespace testing_support
