// SPDX-License-Identifier: MIT
#include "catalogue/SpotView.h"

using namespace Qt::StringLiterals;

bool Matches(SpotView view, SpotState state) {
  switch (view) {
    case SpotView::Alle:
      return true;
    case SpotView::LopenVandaag:
      return IsRunning(state);
    case SpotView::VerlopenBinnenkort:
      return state == SpotState::Verloopt;
    case SpotView::ZonderBestand:
      return state == SpotState::BestandOntbreekt;
    case SpotView::BeginnenLater:
      return state == SpotState::Begint;
    case SpotView::VoorbijOfNietAktief:
      return state == SpotState::Verlopen || state == SpotState::NietAktief;
  }
  return false;
}

int CountIn(SpotView view, const SpotCounts& counts) {
  int count = 0;
  for (int state = 0; state < kSpotStates; ++state) {
    if (Matches(view, static_cast<SpotState>(state))) count += counts.In(static_cast<SpotState>(state));
  }
  return count;
}

QString TextOf(SpotView view) {
  switch (view) {
    case SpotView::Alle:
      break;
    case SpotView::LopenVandaag:
      return u"Lopen vandaag"_s;
    case SpotView::VerlopenBinnenkort:
      return u"Verlopen binnen 7 dagen"_s;
    case SpotView::ZonderBestand:
      return u"Zonder geluidsbestand"_s;
    case SpotView::BeginnenLater:
      return u"Beginnen later"_s;
    case SpotView::VoorbijOfNietAktief:
      return u"Voorbij of niet aktief"_s;
  }
  return u"Alle statussen"_s;
}
