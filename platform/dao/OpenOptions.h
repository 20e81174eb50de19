// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace dao {

struct OpenOptions {
  QString password;       // for a file that asks for one
  bool readOnly = false;  // no byte is written, not even of a lock file

  bool operator==(const OpenOptions&) const = default;
};

}  // namespace dao
