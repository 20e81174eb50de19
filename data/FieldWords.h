// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/Value.h"

#include <QString>
#include <QVariant>

// The catalogue in the words of its screens, in Dutch.

// A record of a server table: "item", "item-spot", "jingle".
QString RecordWord(const QString& serverTable);
// A field, as the editors call it: "Einddatum". A field without a label keeps its name.
QString FieldWord(const QString& field);
// A value of that field: a date as 31-12-2025, "ja" or "nee" for a check box, "leeg" for NULL or an empty text. From a
// storage, or as dao::Recordset::Field returns it.
QString ValueWord(const QString& field, const dao::Value& value);
QString ValueWord(const QString& field, const QVariant& value);
