// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

// Which items of the present catalogue use a record; their names in order. Read with queries of its own. Throws
// runtime::Error.
QStringList ItemsWithSpot(qint32 itemSpotID);      // in their list of item-spots
QStringList ItemsWithPingle(qint32 itemPingleID);  // as opener, middle or closer

// "Gebruikt in 2 items: Blok 1, Blok 2".
QString UsageText(const QStringList& items);
