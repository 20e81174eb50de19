// SPDX-License-Identifier: MIT
#pragma once

#include "data/SpotState.h"

#include <QString>

// The choices of item-spots by their state, as the main window counts them and the item-spot list can narrow itself.
enum class SpotView { Alle, LopenVandaag, VerlopenBinnenkort, ZonderBestand, BeginnenLater, VoorbijOfNietAktief };

inline constexpr SpotView kSpotViews[] = {
    SpotView::Alle,          SpotView::LopenVandaag,  SpotView::VerlopenBinnenkort,
    SpotView::ZonderBestand, SpotView::BeginnenLater, SpotView::VoorbijOfNietAktief};

bool Matches(SpotView view, SpotState state);
int CountIn(SpotView view, const SpotCounts& counts);
QString TextOf(SpotView view);
