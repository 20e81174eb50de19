// SPDX-License-Identifier: MIT
#pragma once

class QWidget;

// A program folder (the global one) in which nothing was ever made: no settings file, and no database of any station.
bool IsFirstStart();

// Offers to make an empty or a demonstration station there. True when one was made: settings and station are to be read
// anew.
bool OfferFirstStation(QWidget* owner);
