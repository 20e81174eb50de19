// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/Station.h"
#include "tests/tools/RunTool.h"

#include <QString>

// A station with a settings file, on which spotrooster-db runs as a process.
class StationProgram {
 public:
  explicit StationProgram(testing_support::Station::Mode mode = testing_support::Station::Mode::Online);

  const testing_support::Station& Rows() const { return station_; }
  QString Folder() const { return station_.Folder(); }
  QString At(const QString& name) const { return Folder() + u'/' + name; }

  // The table of item-spots of the present mode.
  QString Table() const;

  // Runs spotrooster-db with the command, the program folder, and further words.
  ToolRun Run(const QString& command, const QStringList& words = {}) const;

  // Makes a sound file of that length below the program folder, with its folders.
  QString MakeSound(const QString& name, double seconds) const;

 private:
  testing_support::Station station_;
};
