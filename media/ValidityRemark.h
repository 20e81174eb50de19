// SPDX-License-Identifier: MIT
#pragma once

#include "data/SpotFacts.h"
#include "platform/controls/ListLine.h"

#include <QDateTime>

// The state of the spot in the editor's fields, for the line beside the dates: the list's mark and colour, with words
// that count the days; a last day before the first one is told in their place. Nothing to say (an empty word) while a
// date or the file is not chosen yet.
controls::LineDetails RemarkOn(const SpotFacts& spot, const QDateTime& now);
