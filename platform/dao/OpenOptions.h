// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace dao {

struct OpenOptions {
  QString password = {};  // for a file that has one
  bool readOnly = false;  // nothing is written, no lock file either

  bool operator==(const OpenOptions&) const = default;
};

}  // namespace dao
