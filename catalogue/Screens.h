// SPDX-License-Identifier: MIT
#pragma once

#include "catalogue/SpotView.h"

class QWidget;

// Adds the overview lists and the cleanup dialogs to the table of screens. Called once at start-up.
void RegisterCatalogueScreens();

// Shows the item-spot list limited to the spots in these states; returns when it is closed.
void ShowItemSpotsOnly(SpotView view, QWidget* owner);
