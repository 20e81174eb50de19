// SPDX-License-Identifier: MIT
#pragma once

#include "data/Catalogue.h"

#include <QStringList>

// Names of the items of a catalogue that use a record, sorted. Any thread. Throws runtime::Error.
QStringList ItemsWithSpot(qint32 itemSpotID, const Catalogue& catalogue);  // in their list
// As opener, middle or closer.
QStringList ItemsWithPingle(qint32 itemPingleID, const Catalogue& catalogue);

// Names of the item-spots of this item that other items have too, sorted. Any thread. Throws runtime::Error.
QStringList SpotsInOtherItems(qint32 itemID, const Catalogue& catalogue);

// "Gebruikt in 2 items: Blok 1, Blok 2".
QString UsageText(const QStringList& items);
