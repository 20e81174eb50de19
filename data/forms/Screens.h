// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

class QWidget;

// The screens that one window may ask another folder for. An item's editor opens the lists, and the item list opens the
// item's editor: through this table neither knows the other.
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
};

using ShowScreenModally = std::function<void(QWidget* owner)>;

// Start-up registers every screen once; a test may put a stand-in in its place.
void RegisterScreen(Screen screen, ShowScreenModally show);
bool HasScreen(Screen screen);

// Shows the screen, owned by that window, and returns when it is closed. runtime::Error when nothing is registered.
void ShowScreen(Screen screen, QWidget* owner);
