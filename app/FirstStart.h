// SPDX-License-Identifier: MIT
#pragma once

class QWidget;

// True when the program folder exists and has neither a settings file nor anything in its data folder. A folder that
// cannot be read (a drive that does not respond, no permission, a mistyped name) is not a first start.
bool IsFirstStart();

// Offers to make an empty or a demonstration station there. True when one was made: the caller must read settings and
// station then.
bool OfferFirstStation(QWidget* owner);
