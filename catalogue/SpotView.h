// SPDX-License-Identifier: MIT
#pragma once

#include "data/SpotState.h"

#include <QString>

// Groups of item-spot states: counted by the main window, filters of the item-spot list.
enum class SpotView { Alle, LopenVandaag, VerlopenBinnenkort, ZonderBestand, BeginnenLater, VoorbijOfNietAktief };

inline constexpr SpotView kSpotViews[] = {
    SpotView::Alle,          SpotView::LopenVandaag,  SpotView::VerlopenBinnenkort,
    SpotView::ZonderBestand, SpotView::BeginnenLater, SpotView::VoorbijOfNietAktief};

bool Matches(SpotView view, SpotState state);
int CountIn(SpotView view, const SpotCounts& counts);
QString TextOf(SpotView view);
