// SPDX-License-Identifier: MIT
#pragma once

#include "data/Rows.h"

#include <QDate>
#include <QDateTime>
#include <QList>
#include <QString>

// What the demonstration stations hold: believable spots, jingles and items around a given day.
namespace demo {

struct Spot {
  ItemSpotRow row;  // length and path still open
  QString file;     // below the audio folder, with backslashes: "Spots\Naam.mp3"
  int seconds = 20;
  bool missing = false;  // its file is left out
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
// Of both filling options; refers to the numbers of Spots() and Jingles().
QList<Item> Items();

}  // namespace demo
