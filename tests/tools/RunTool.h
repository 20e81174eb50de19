// SPDX-License-Identifier: MIT
#pragma once

#include "tools/Commands.h"

#include <sstream>
#include <string>

// Output and exit code of one call of the program.
struct ToolRun {
  int exitCode = 0;
  std::string out;
  std::string err;
};

inline ToolRun RunTool(const QStringList& words) {
  std::ostringstream out;
  std::ostringstream err;
  const int exitCode = RunCommand(words, {out, err});
  return {exitCode, out.str(), err.str()};
}
