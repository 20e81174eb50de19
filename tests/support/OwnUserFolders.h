// SPDX-License-Identifier: MIT
#pragma once

#include <QTemporaryDir>

namespace testing_support {

// While it exists, this process and its children keep settings and caches of the user in a temporary folder instead of
// the home folder.
class OwnUserFolders {
 public:
  OwnUserFolders();

 private:
  QTemporaryDir folder_;
};

}  // namespace testing_support
