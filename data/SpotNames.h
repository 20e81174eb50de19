// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/Prefetch.h"

#include <QHash>
#include <QString>

#include <cstdint>
#include <vector>

// The names of the item-spots of a list, each as GetItemSpotID_Naam gives it, errors too, without a statement for each
// line: from a server one round trip reads those of the list; from a file one statement reads those of the whole table
// when the list is long.
class SpotNames {
 public:
  // `ids`: the item-spots of the list. NameOf accepts any other number too.
  SpotNames(QString databasePath, QString table, const std::vector<std::int64_t>& ids);

  QString NameOf(qint32 id) const;

 private:
  static constexpr std::size_t kLongList = 64;  // lines

  void ReadAll();

  QString databasePath_;
  QString table_;
  dao::Prefetch prefetched_;  // from a server
  bool hasAll_ = false;
  QHash<qint32, QString> names_;
};
