// SPDX-License-Identifier: MIT
#pragma once

#include "tests/tools/RunTool.h"

#include <QString>
#include <QStringList>

#include <functional>

namespace command_kills {

struct Command {
  const char* name;
  QString folder;  // that it works on; each run gets a copy
  std::function<QStringList(const QString& folder)> words;
  std::function<void(const QString& folder)> afterKill;
  std::function<void(const QString& folder, const ToolRun& next)> afterNext;  // the same command, run to its end
};

bool HasStrace();

// Kills spotrooster-db at the start of each of its calls that open, write, sync, link, rename or remove a file: every
// SPOTROOSTER_COMMAND_STEP-th of each kind (default 12), beginning with the first. Prints the number of kills.
void KillAtEachCall(const Command& command);

}  // namespace command_kills
