// SPDX-License-Identifier: MIT
#include "bench/SpotStation.h"

#include "bench/Plain.h"
#include "data/DatabasePaths.h"
#include "data/Globals.h"
#include "data/Schema.h"
#include "platform/dao/Storage.h"
#include "platform/runtime/HostPath.h"

#include <QDir>

using namespace Qt::StringLiterals;

namespace bench {
namespace {

QString NameOf(int number) {
  static const QStringList kShops{u"Bakkerij"_s, u"Fietsen"_s, u"Meubelhuis"_s, u"Café"_s, u"Tuincentrum"_s};
  return kShops[number % kShops.size()] + u" Van Damme "_s + QString::number((number * 7919) % 100003);
}

}  // namespace

SpotStation::SpotStation(int rows, const QString& place)
    : folder_((place.isEmpty() ? QDir::tempPath() : place) + u"/bench-XXXXXX") {
  Require(folder_.isValid(), "a folder for the station");
  QDir(folder_.path()).mkdir(u"data"_s);
  runtime::SetDrives({});
  global.programFolder = global.databasePath = runtime::PathText(folder_.path());
  FormDatabasePaths();
  schema::CreateLocalDatabase(global.localDatabasePath);
  schema::CreateServerDatabase(global.serverDatabasePath);
  schema::CreateWorkDatabase(global.workDatabasePath);
  global.online = true;
  for (int row = 1; row <= rows; ++row)
    spots_.push_back({NameOf(row), row});
  FillServer();
}

// Below SQL: one transaction for all rows.
void SpotStation::FillServer() const {
  const auto storage = dao::OpenStorage(global.serverDatabasePath);
  const auto turn = storage->Begin(dao::Access::Write);
  const auto table = storage->OpenTable(u"tblItemSpots"_s);
  const dao::Value none;
  const auto number = [](qint64 value) { return dao::Value(std::int64_t{value}); };
  for (const auto& spot : spots_) {
    const std::vector<dao::Value> values = {number(spot.itemData),
                                            u"Z:\\a.wav",
                                            spot.text.toStdU16String(),
                                            number(30),
                                            none,
                                            none,
                                            45658.0,
                                            number(0),
                                            73050.0,
                                            number(23),
                                            number(0),
                                            none,
                                            number(1)};
    table->Insert(values);
  }
  turn->Commit();
}

}  // namespace bench
