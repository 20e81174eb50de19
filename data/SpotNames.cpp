// SPDX-License-Identifier: MIT
#include "data/SpotNames.h"

#include "data/Lookups.h"
#include "data/Text.h"
#include "platform/dao/Database.h"
#include "platform/dao/postgres/ServerAddress.h"
#include "platform/runtime/Error.h"

#include <utility>

using namespace Qt::StringLiterals;

SpotNames::SpotNames(QString databasePath, QString table, const std::vector<std::int64_t>& ids)
    : databasePath_(std::move(databasePath)),
      table_(std::move(table)),
      prefetched_(databasePath_, {table_, u"ID"_s, {u"Naam"_s}, ids}) {
  if (ids.size() < kLongList || dao::IsServerPath(databasePath_)) return;
  try {
    ReadAll();
  } catch (const runtime::Error&) {
    // Each line is then read, and its error shown, separately.
  }
}

void SpotNames::ReadAll() {
  dao::Database database = dao::OpenDatabase(databasePath_);
  QHash<qint32, QString> names;
  database.Visit(u"SELECT ID, Naam FROM "_s + table_, [&](const dao::Row& row) {
    const QString name = NameIn(row.Field(1));
    const qint32 id = row.Field(0).toInt();
    if (!names.contains(id)) names.insert(id, name);
    return true;
  });
  names_ = std::move(names);
  hasAll_ = true;
}

QString SpotNames::NameOf(qint32 id) const {
  return hasAll_ ? names_.value(id, u""_s) : GetItemSpotID_Naam(id, databasePath_, table_);
}
