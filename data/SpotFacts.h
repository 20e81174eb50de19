// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/Recordset.h"
#include "platform/runtime/Probe.h"

#include <QDate>
#include <QString>

#include <optional>

// What the catalogue knows of one item-spot, as far as its state goes.
struct SpotFacts {
  QString path;
  bool aktief = false;
  std::optional<QDate> startDatum;  // first day of validity; none: since ever
  std::optional<QDate> eindDatum;   // last day of validity; none: for ever
  std::optional<int> startUur;      // first hour of the day, 0 to 23
  std::optional<int> eindUur;       // last hour of the day, inclusive
  std::optional<qint32> lengteSec;
  std::optional<runtime::Presence> file;  // none: not looked at yet
};

// Of the present row, which holds these fields under their own names. Whether the file is there is left open.
SpotFacts FactsOf(const dao::Recordset& row);
