// SPDX-License-Identifier: MIT
#pragma once

#include "tools/Commands.h"

#include <sstream>
#include <string>

// What one call of the tool printed and answered.
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
