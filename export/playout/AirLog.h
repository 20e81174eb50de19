// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QDate>
#include <QDateTime>
#include <QString>

#include <optional>
#include <vector>

// One item-spot that was heard on air.
struct Airing {
  qint32 spotID = 0;
  QDateTime moment;   // local time; as exact as the log tells it
  qint32 itemID = 0;  // the block in which it was heard; 0: the log does not tell
};

// The airings that a playout system's log tells, in its order. Known are the log of packaging/playout/spotrooster.liq
// ("seconds since 1970,item-spot,item"), Rivendell's cut log of one day, whose carts have the numbers of the Rivendell
// form, and a table with the columns Moment (jjjj-mm-dd uu:mm:ss or dd-mm-jjjj uu:mm:ss), ItemSpot and, if wanted,
// Item, parted by commas or semicolons. What is no item-spot (jingles, music) is passed over. Throws runtime::Error
// that names the log (`name`) and the line.
//
// `day`: of a cut log whose own date can be read two ways.
std::vector<Airing> ReadAirLog(const QByteArray& content, const QString& name, const std::optional<QDate>& day = {});
