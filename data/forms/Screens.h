// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

class QWidget;

// Screens that one folder may open in another, without including it: an item's editor opens the lists, and the item
// list opens the item's editor.
enum class Screen {
  Items,
  ItemSpots,
  ItemPingles,
  ItemsDetail,
  ItemSpotsDetail,
  ItemPinglesDetail,
  ItemOpruimen,
  ItemSpotOpruimen,
  PlanningExporteren,
  Defaults,
  Beluisteren,
  OfflineLog,
};

using ShowScreenModally = std::function<void(QWidget* owner)>;

// Start-up registers every screen once; a test may replace one.
void RegisterScreen(Screen screen, ShowScreenModally show);
bool HasScreen(Screen screen);

// Shows the screen with `owner` as its owner window and returns when it is closed. Throws runtime::Error when it is not
// registered.
void ShowScreen(Screen screen, QWidget* owner);
