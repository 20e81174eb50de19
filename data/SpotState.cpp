// SPDX-License-Identifier: MIT
#include "data/SpotState.h"

#include "platform/runtime/Clock.h"
#include "platform/runtime/Dates.h"
#include "platform/runtime/Numbers.h"

#include <QLocale>
#include <QStringList>

#include <optional>

using namespace Qt::StringLiterals;
using runtime::DateText;

namespace {

std::optional<int> NumberOf(const QVariant& value) {
  if (!value.isValid()) return std::nullopt;
  return value.toInt();
}

std::optional<QDate> DateOf(const QVariant& value) {
  if (!value.isValid()) return std::nullopt;
  return value.toDate();
}

// `value` returns a field by its place in SpotFactFields.
template <typename Value>
SpotFacts FactsFrom(const Value& value) {
  SpotFacts facts;
  facts.path = runtime::TrimBlanks(value(0).toString());
  facts.aktief = value(1).toInt() != 0;
  facts.startDatum = DateOf(value(2));
  facts.eindDatum = DateOf(value(3));
  facts.startUur = NumberOf(value(4));
  facts.eindUur = NumberOf(value(5));
  facts.lengteSec = NumberOf(value(6));
  return facts;
}

bool FileMissing(const SpotFacts& spot) {
  return spot.path.isEmpty() || spot.file == runtime::Presence::NotThere;
}

}  // namespace

QStringList SpotFactFields() {
  return {u"Path"_s, u"Aktief"_s, u"StartDatum"_s, u"EindDatum"_s, u"StartUur"_s, u"EindUur"_s, u"LengteSec"_s};
}

SpotFacts FactsOf(const dao::Recordset& row) {
  static const QStringList kFields = SpotFactFields();
  return FactsFrom([&](int field) { return row.Field(kFields[field]); });
}

SpotFacts FactsOf(const dao::Row& row, int first) {
  return FactsFrom([&](int field) { return row.Field(first + field); });
}

bool WithinHours(const SpotFacts& spot, int hour) {
  const int first = spot.startUur.value_or(0);
  const int last = spot.eindUur.value_or(23);
  return first <= last ? first <= hour && hour <= last : hour >= first || hour <= last;
}

SpotState StateOf(const SpotFacts& spot, const QDateTime& now) {
  if (!spot.aktief) return SpotState::NietAktief;
  return FileMissing(spot) ? SpotState::BestandOntbreekt : StateByTime(spot, now);
}

SpotState StateByTime(const SpotFacts& spot, const QDateTime& now) {
  const QDate today = now.date();
  if (spot.eindDatum && *spot.eindDatum < today) return SpotState::Verlopen;
  if (spot.startDatum && *spot.startDatum > today) return SpotState::Begint;
  if (spot.eindDatum && today.daysTo(*spot.eindDatum) <= kEndsSoonDays) return SpotState::Verloopt;
  return WithinHours(spot, now.time().hour()) ? SpotState::Loopt : SpotState::BuitenUren;
}

bool IsRunning(SpotState state) {
  return state == SpotState::Loopt || state == SpotState::BuitenUren || state == SpotState::Verloopt;
}

QString StateText(const SpotFacts& spot, SpotState state) {
  switch (state) {
    case SpotState::NietAktief:
      return u"niet aktief"_s;
    case SpotState::BestandOntbreekt:
      return u"geluidsbestand ontbreekt"_s;
    case SpotState::Verlopen:
      return u"verlopen op "_s + DateText(spot.eindDatum);
    case SpotState::Begint:
      return u"begint "_s + DateText(spot.startDatum);
    case SpotState::Verloopt:
      return spot.eindDatum == runtime::Now().date() ? u"verloopt vandaag"_s
                                                     : u"verloopt "_s + DateText(spot.eindDatum);
    case SpotState::BuitenUren:
      return u"nu buiten de uren"_s;
    case SpotState::Loopt:
      break;
  }
  return spot.eindDatum ? u"loopt t/m "_s + DateText(spot.eindDatum) : u"loopt"_s;
}

int SpotCounts::Running() const {
  int running = 0;
  for (int state = 0; state < kSpotStates; ++state) {
    if (IsRunning(static_cast<SpotState>(state))) running += In(static_cast<SpotState>(state));
  }
  return running;
}

QString SpotCounts::Text() const {
  QStringList parts;
  const auto text = [](int count, const QString& one, const QString& many) -> QString {
    return QLocale(QLocale::Dutch).toString(count) + u' ' + (count == 1 ? one : many);
  };
  const auto add = [&](int count, const QString& one, const QString& many) {
    if (count > 0) parts += text(count, one, many);
  };
  add(Running(), u"loopt"_s, u"lopen"_s);
  if (const int ending = In(SpotState::Verloopt); ending > 0)
    parts.last() += u" ("_s + text(ending, u"verloopt binnen 7 dagen"_s, u"verlopen binnen 7 dagen"_s) + u')';
  add(In(SpotState::Begint), u"begint later"_s, u"beginnen later"_s);
  add(OverOrInactive(), u"voorbij of niet aktief"_s, u"voorbij of niet aktief"_s);
  add(In(SpotState::BestandOntbreekt), u"zonder bestand"_s, u"zonder bestand"_s);
  return parts.join(u", "_s);
}
