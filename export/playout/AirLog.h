// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QDate>
#include <QDateTime>
#include <QString>

#include <optional>
#include <vector>

// One broadcast of an item-spot.
struct Airing {
  qint32 spotID = 0;
  QDateTime moment;   // local time, as precise as the log
  qint32 itemID = 0;  // the block in which it was aired; 0: not in the log
};

// Reads the airings in a playout system's log, in the order of the log. Formats: the log of
// packaging/playout/spotrooster.liq ("seconds since 1970,item-spot,item"); Rivendell's cut log of one day, with the
// cart numbers of RivendellForm.cpp; a table separated by commas or semicolons with the columns Ogenblik (jjjj-mm-dd
// uu:mm:ss or dd-mm-jjjj uu:mm:ss), ItemSpot and optionally Item. Other sounds (jingles, music) are skipped. Throws a
// runtime::Error with the log's `name` and the line.
//
// `day`: decides between day and month for a cut log with an ambiguous date.
std::vector<Airing> ReadAirLog(const QByteArray& content, const QString& name, const std::optional<QDate>& day = {});
