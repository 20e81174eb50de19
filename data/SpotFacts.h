// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/Recordset.h"
#include "platform/runtime/Probe.h"

#include <QDate>
#include <QString>

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

// Reads the recordset's current row, which must contain these fields by name. Leaves `file` empty.
SpotFacts FactsOf(const dao::Recordset& row);
