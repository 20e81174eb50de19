// SPDX-License-Identifier: MIT
#pragma once

#include "data/Rows.h"

#include <QDate>
#include <QDateTime>
#include <QList>
#include <QString>

// Contents of the demonstration stations: realistic spots, jingles and items around a given day.
namespace demo {

struct Spot {
  ItemSpotRow row;  // length and path are set by MakeSounds
  QString file;     // below the audio folder, with backslashes: "Spots\Naam.mp3"
  int seconds = 20;
  bool missing = false;  // no file is made
  int playCount = 0;
  QDateTime lastPlayed;  // invalid = never
};

struct Jingle {
  ItemPingleRow row;
  QString file;
  int seconds = 5;
};

struct Item {
  ItemRow row;
  QList<qint32> spots;  // item-spot numbers in play order
};

QList<Spot> Spots(QDate today);
QList<Jingle> Jingles();
// Items of both options (list and file-name pattern); they use the IDs of Spots() and Jingles().
QList<Item> Items();

}  // namespace demo
