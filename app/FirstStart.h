// SPDX-License-Identifier: MIT
#pragma once

class QWidget;

// True when the program folder has neither a settings file nor a database of any station.
bool IsFirstStart();

// Offers to make an empty or a demonstration station there. True when one was made: the caller must read settings and
// station again.
bool OfferFirstStation(QWidget* owner);
