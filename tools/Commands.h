// SPDX-License-Identifier: MIT
#pragma once

#include "tools/Arguments.h"

#include <QList>
#include <QStringList>

#include <functional>
#include <ostream>

// Exit code of a command.
inline constexpr int kDone = 0;
inline constexpr int kFailed = 1;
inline constexpr int kWrongUse = 2;
inline constexpr int kWaits = 3;  // done, but something waits for a person

struct Streams {
  std::ostream& out;  // UTF-8
  std::ostream& err;
};

struct Command {
  QString name;
  QString usage;    // the words after the name, as Usage reads them
  QString summary;  // one Dutch sentence
  std::function<int(const Arguments& arguments, const Streams& streams)> run;
  QString details{};       // Dutch: what else the user must know
  QStringList examples{};  // shell words after the program's name; they work in the order of AllCommands
};

Command CreateCommand();
Command DemoCommand();
Command TablesCommand();
Command SchemaCommand();
Command DumpCommand();
Command SqlCommand();
Command MeasureCommand();
Command CheckCommand();
Command CompactCommand();
Command RestoreCommand();
Command CopyCommand();
Command ExportCommand();
Command ApplyCommand();
Command ConflictsCommand();
Command SpotsCommand();
Command LocateCommand();
Command PlayoutCommand();
Command PlayedCommand();

// All commands, in the order in which help shows them.
QList<Command> AllCommands();

// Runs the command in the words. An error, also of the output, is reported on streams.err and returns kFailed;
// kWrongUse shows the usage.
int RunCommand(const QStringList& words, const Streams& streams);
