// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

// Names of the items of the current catalogue that use a record, sorted. Throws runtime::Error.
QStringList ItemsWithSpot(qint32 itemSpotID);      // in their list of item-spots
QStringList ItemsWithPingle(qint32 itemPingleID);  // as opener, middle or closer

// "Gebruikt in 2 items: Blok 1, Blok 2".
QString UsageText(const QStringList& items);
