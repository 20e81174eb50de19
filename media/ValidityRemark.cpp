// SPDX-License-Identifier: MIT
#include "media/ValidityRemark.h"

#include "data/forms/SpotDetails.h"

using namespace Qt::StringLiterals;

namespace {

QString DaysAhead(qint64 days) {
  if (days == 0) return u"vandaag"_s;
  if (days == 1) return u"morgen"_s;
  return u"over %1 dagen"_s.arg(days);
}

bool WorthSaying(const SpotFacts& spot, SpotState state) {
  if (state == SpotState::NietAktief) return true;
  if (spot.path.isEmpty()) return false;
  return state == SpotState::BestandOntbreekt || (spot.startDatum && spot.eindDatum);
}

// Such a spot is never played. Saving it is allowed.
bool EndsBeforeItBegins(const SpotFacts& spot) {
  return spot.startDatum && spot.eindDatum && *spot.eindDatum < *spot.startDatum;
}

}  // namespace

controls::LineDetails RemarkOn(const SpotFacts& spot, const QDateTime& now) {
  const SpotState state = StateOf(spot, now);
  if (!WorthSaying(spot, state)) return {};
  controls::LineDetails remark = DetailsOf(spot, state);
  if (state == SpotState::NietAktief || state == SpotState::BestandOntbreekt) return remark;
  if (EndsBeforeItBegins(spot)) {
    remark.mark = controls::LineMark::Cross;
    remark.tone = controls::LineTone::Wrong;
    remark.wordInTone = true;
    remark.word = u"einddatum vóór startdatum"_s;
    return remark;
  }
  if (state == SpotState::Begint) remark.word = u"begint "_s + DaysAhead(now.date().daysTo(*spot.startDatum));
  if (state == SpotState::Verloopt) remark.word = u"verloopt "_s + DaysAhead(now.date().daysTo(*spot.eindDatum));
  if (state == SpotState::Loopt) remark.word = u"loopt, nog %1 dagen"_s.arg(now.date().daysTo(*spot.eindDatum));
  return remark;
}
