// SPDX-License-Identifier: MIT
#pragma once

#include "data/SpotState.h"
#include "platform/controls/ListLine.h"

#include <QDateTime>

// State of the spot in the editor's fields, for the line next to the dates: mark and colour as in the list, and a text
// with the number of days, or a remark that the last day is before the first. Empty text while a date or the file is
// missing.
controls::LineDetails RemarkOn(const SpotFacts& spot, const QDateTime& now);
