#pragma once
#include "platform/controls/ListLine.h"

#include <QDate>
#include <QDateTime>
#include <QString>

#include <optional>

// What decides whether a spot may be played now, as the editor's fields tell it; a field without a fit value is empty.
struct SpotValidity {
  bool aktief = false;
  bool fileMissing = false;
  std::optional<QDate> startDatum;  // first day
  std::optional<QDate> eindDatum;   // last day
  std::optional<int> startUur;      // first hour, 0 to 23
  std::optional<int> eindUur;       // last hour, inclusive
};

// The state beside the fields: shape, colour and word.
struct ValidityRemark {
  controls::LineMark mark = controls::LineMark::None;
  controls::LineTone tone = controls::LineTone::Quiet;
  bool wordInTone = false;  // words that ask for a hand carry the colour too
  QString word;
};

// The first state that holds: not active, file missing, over, begins, ends within 7 days, outside of its hours, runs.
// Nothing to say (an empty word) while a date is not known.
ValidityRemark RemarkOn(const SpotValidity& spot, const QDateTime& now);
