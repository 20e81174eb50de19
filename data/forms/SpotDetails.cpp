// SPDX-License-Identifier: MIT
#include "data/forms/SpotDetails.h"

#include "platform/runtime/Dates.h"

#include <QStringList>

#include <optional>

using namespace Qt::StringLiterals;
using controls::LineDetails;
using controls::LineMark;
using controls::LineTone;

namespace {

void SetMark(LineDetails& details, SpotState state) {
  switch (state) {
    case SpotState::NietAktief:
      details.mark = LineMark::Dash;
      details.quietText = true;
      return;
    case SpotState::BestandOntbreekt:
      details.mark = LineMark::Cross;
      details.tone = LineTone::Wrong;
      details.wordInTone = true;
      return;
    case SpotState::Verlopen:
      details.mark = LineMark::Square;
      return;
    case SpotState::Begint:
      details.mark = LineMark::Clock;
      details.tone = LineTone::Begins;
      details.wordInTone = true;
      return;
    case SpotState::Verloopt:
      details.mark = LineMark::Triangle;
      details.tone = LineTone::Ends;
      details.wordInTone = true;
      return;
    case SpotState::BuitenUren:
      details.mark = LineMark::Clock;
      return;
    case SpotState::Loopt:
      details.mark = LineMark::Circle;
      details.tone = LineTone::Runs;
      return;
  }
}

QString ValidityText(const SpotFacts& spot) {
  QString text = u"Geldig"_s;
  if (spot.startDatum) text += u" van "_s + runtime::DateText(spot.startDatum);
  if (spot.eindDatum) text += u" tot en met "_s + runtime::DateText(spot.eindDatum);
  if (!spot.startDatum && !spot.eindDatum) text += u" zonder begin of einde"_s;
  return text + u", van uur "_s + QString::number(spot.startUur.value_or(0)) + u" tot en met uur "_s +
         QString::number(spot.eindUur.value_or(23));
}

QString FileText(const SpotFacts& spot) {
  if (spot.path.isEmpty()) return u"Er is geen geluidsbestand gekozen."_s;
  if (spot.file == runtime::Presence::NotThere) return u"Ontbreekt: "_s + spot.path;
  if (spot.file == runtime::Presence::NotReachable) {
    return spot.path + u"\nDe schijf of netwerkmap is nu niet bereikbaar; of het bestand er is, is niet bekend."_s;
  }
  if (spot.file == runtime::Presence::Denied) {
    return spot.path + u"\nDe toegang tot de map is geweigerd; of het bestand er is, is niet bekend."_s;
  }
  return spot.path;
}

}  // namespace

QString LengthText(std::optional<qint32> seconds) {
  if (!seconds || *seconds < 0) return {};
  const qint32 hours = *seconds / 3600;
  const QString minutes = QString::number(*seconds / 60 % 60);
  const QString rest = u':' + QString::number(*seconds % 60).rightJustified(2, u'0');
  if (hours == 0) return minutes + rest;
  return QString::number(hours) + u':' + minutes.rightJustified(2, u'0') + rest;
}

LineDetails DetailsOf(const SpotFacts& spot, SpotState state) {
  LineDetails details;
  SetMark(details, state);
  details.word = StateText(spot, state);
  if (spot.eindDatum) details.date = runtime::DateText(*spot.eindDatum);
  details.trailing = LengthText(spot.lengteSec);
  details.searched = spot.path;
  details.toolTip = QStringList{StateText(spot, state), ValidityText(spot), FileText(spot)}.join(u'\n');
  return details;
}
