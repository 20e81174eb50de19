// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <optional>

// The values of one catalogue row that an editor passes to the write layer. An INSERT leaves out a field whose optional
// is empty; an UPDATE writes NULL to it.

struct ItemRow {
  qint32 id = 0;
  QString naam;
  qint32 aktief = 0;
  qint32 locked = 0;
  qint32 itemSpotsOptID = 1;  // 1 = list of item-spots, 2 = folder and file-name pattern
  QString opt2Directory;
  QString opt2VastNaamGedeelte;
  qint32 opt2VariabelNaamGedeelte = 0;
  QString opt2FormatGedeelte;
  qint32 opt2Eerstedagvanweek = 0;
  QString opt2FileExtensie;
  qint32 opt2MixPunt = 0;  // milliseconds before the end
  qint32 optMeerdereSpots = 0;
  qint32 aantalSpots = 0;
  qint32 maxAantalSpots = 0;
  qint32 chkRandomizeMeerdereSpots = 0;
  std::optional<qint32> opener;
  std::optional<qint32> midden;
  std::optional<qint32> sluiter;
};

struct ItemSpotRow {
  qint32 id = 0;
  QString path;
  QString naam;
  std::optional<qint32> lengteSec;
  std::optional<qint32> startPunt;
  std::optional<qint32> mixpunt;     // milliseconds before the end
  std::optional<qint32> startDatum;  // day number
  std::optional<qint32> startUur;
  std::optional<qint32> eindDatum;
  std::optional<qint32> eindUur;
  qint32 aktief = 0;
};

struct ItemPingleRow {
  qint32 id = 0;
  QString path;
  QString naam;
  std::optional<qint32> lengteSec;
  std::optional<qint32> startPunt;
  std::optional<qint32> mixPunt;
  qint32 aktief = 0;
};

struct ItemsItemSpotsRow {
  qint32 itemID = 0;
  qint32 itemSpotOrder = 0;  // from 1
  qint32 itemSpotID = 0;
};
