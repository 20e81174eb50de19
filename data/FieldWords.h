// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/Value.h"

#include <QString>

// The catalogue in the words of its screens, in Dutch.

// A record of a server table: "item", "item-spot", "jingle".
QString RecordWord(const QString& serverTable);
// A field, as the editors call it: "Einddatum". A field without a label keeps its name.
QString FieldWord(const QString& field);
// A value of that field: a date as 31-12-2025, a yes or no as such, "leeg" for nothing.
QString ValueWord(const QString& field, const dao::Value& value);
