// SPDX-License-Identifier: MIT
#include "tests/support/OwnUserFolders.h"

#include <QFile>

namespace testing_support {

OwnUserFolders::OwnUserFolders() {
  for (const char* name : {"XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME"}) {
    qputenv(name, QFile::encodeName(folder_.filePath(QString::fromLatin1(name))));
  }
  qputenv("XDG_RUNTIME_DIR", QFile::encodeName(folder_.path()));  // must exist
}

}  // namespace testing_support
