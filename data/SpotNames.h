// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QString>

// The names of item-spots for a list of `count` lines, each as GetItemSpotID_Naam gives it, errors too. For a long list
// from a file one statement reads the names of the table, in place of a statement for each line. (From a server
// dao::Prefetch reads those of the list.)
class SpotNames {
 public:
  SpotNames(QString databasePath, QString table, int count);

  QString NameOf(qint32 id) const;

 private:
  static constexpr int kLongList = 64;  // lines

  void ReadAll();

  QString databasePath_;
  QString table_;
  bool hasAll_ = false;
  QHash<qint32, QString> names_;
};
