// SPDX-License-Identifier: MIT
#pragma once

#include "catalogue/SpotView.h"

class QWidget;

// Makes the overview lists and the cleanup dialogs known to the table of screens. Start-up calls it once.
void RegisterCatalogueScreens();

// The item-spot list narrowed to the spots in these states; returns when it is closed.
void ShowItemSpotsOnly(SpotView view, QWidget* owner);
