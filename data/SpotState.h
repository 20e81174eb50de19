// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/Recordset.h"
#include "platform/dao/Row.h"
#include "platform/runtime/Probe.h"

#include <QDate>
#include <QDateTime>
#include <QString>
#include <QStringList>

#include <array>
#include <cstddef>
#include <optional>

// The fields of one item-spot that decide its state.
struct SpotFacts {
  QString path;
  bool aktief = false;
  std::optional<QDate> startDatum;  // first day of validity; none: no limit
  std::optional<QDate> eindDatum;   // last day of validity, inclusive; none: no limit
  std::optional<int> startUur;      // first hour of the day, 0 to 23
  std::optional<int> eindUur;       // last hour of the day, inclusive
  std::optional<qint32> lengteSec;
  std::optional<runtime::Presence> file;  // none: not checked yet
};

// The field names that FactsOf reads, in the order of a row's columns.
QStringList SpotFactFields();

// Reads the recordset's current row, which must contain these fields by name. Leaves `file` empty.
SpotFacts FactsOf(const dao::Recordset& row);
// The same of a row that has these fields from column `first` on.
SpotFacts FactsOf(const dao::Row& row, int first);

// When several apply, the first of this list is the state.
enum class SpotState { NietAktief, BestandOntbreekt, Verlopen, Begint, Verloopt, BuitenUren, Loopt };

inline constexpr int kSpotStates = 7;

// A spot is in state Verloopt (ends soon) from this many days before its last day.
inline constexpr int kEndsSoonDays = 7;

// The state of a spot at time `now`. A file that was not checked yet or cannot be reached counts as present.
SpotState StateOf(const SpotFacts& spot, const QDateTime& now);

// Whether `hour` (0 to 23) is within the spot's first and last hour, both inclusive. If the first hour is greater than
// the last, the range spans midnight.
bool WithinHours(const SpotFacts& spot, int hour);

// The state as shown in lists: "loopt t/m 20-04-2025"; on the last day (by runtime::Now) "verloopt vandaag".
QString StateText(const SpotFacts& spot, SpotState state);

// The state of an active spot by its days and hours alone.
SpotState StateByTime(const SpotFacts& spot, const QDateTime& now);

// Whether a spot in this state runs on the day of `now`, at that hour or at another.
bool IsRunning(SpotState state);

// Number of spots per state.
class SpotCounts {
 public:
  void Add(SpotState state) { ++counts_[static_cast<std::size_t>(state)]; }
  void Remove(SpotState state) { --counts_[static_cast<std::size_t>(state)]; }
  int In(SpotState state) const { return counts_[static_cast<std::size_t>(state)]; }

  // Running today, including those outside their hours at this time of day and those that end soon.
  int Running() const;
  int OverOrInactive() const { return In(SpotState::Verlopen) + In(SpotState::NietAktief); }

  // "10 lopen (2 verlopen binnen 7 dagen), 3 beginnen later, ..."; counts of zero are omitted.
  QString Text() const;

 private:
  std::array<int, kSpotStates> counts_{};
};
