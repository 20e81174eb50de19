// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/Station.h"
#include "tests/tools/RunTool.h"

#include <QString>

// A station with a settings file, worked on by the maintenance program itself in a process of its own.
class StationProgram {
 public:
  explicit StationProgram(testing_support::Station::Mode mode = testing_support::Station::Mode::Online);

  const testing_support::Station& Rows() const { return station_; }
  QString Folder() const { return station_.Folder(); }
  QString At(const QString& name) const { return Folder() + u'/' + name; }

  // The table of item-spots that the present mode reads.
  QString Table() const;

  // Runs spotrooster-db with the command, the program folder, and the words behind it.
  ToolRun Run(const QString& command, const QStringList& words = {}) const;

  // A sound file of that length below the program folder; the folders on its way are made.
  QString MakeSound(const QString& name, double seconds) const;

 private:
  testing_support::Station station_;
};
