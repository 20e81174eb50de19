// SPDX-License-Identifier: MIT
#include "tests/support/Station.h"

#include "data/Catalogue.h"
#include "data/DatabasePaths.h"
#include "data/Globals.h"
#include "data/Schema.h"
#include "platform/runtime/HostPath.h"
#include "tests/support/Cluster.h"

#include <QDir>
#include <QFile>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace testing_support {
namespace {

int Execute(const QString& path, const QString& statement) {
  dao::Database database = dao::OpenDatabase(path);
  return database.Execute(statement);
}

dao::Recordset Open(const QString& path, const QString& select) {
  dao::Database database = dao::OpenDatabase(path);
  return database.OpenRecordset(select);
}

// Stations of earlier tests are removed from the server too.
QString EmptiedServer() {
  SharedCluster().Sql(
      u"DO $$DECLARE s name; BEGIN FOR s IN SELECT nspname FROM pg_namespace WHERE nspname LIKE 'Ovalisto%' LOOP "
      "EXECUTE format('DROP SCHEMA %I CASCADE', s); END LOOP; END$$"_s);
  return SharedCluster().Url();
}

}  // namespace

Station::Station(Mode mode) {
  if (!folder_.isValid()) throw std::runtime_error("no temporary folder");
  runtime::SetDrives({});
  for (const QString& name : {u"data"_s, u"server"_s, u"export"_s, u"audio"_s})
    QDir(folder_.path()).mkdir(name);
  global = Globals();
  global.programFolder = runtime::PathText(folder_.path());
  global.databasePath = testing_support::OnServer() ? EmptiedServer() : runtime::PathText(ServerFolder());
  global.exportPath = runtime::PathText(ExportFolder());
  FormDatabasePaths();
  schema::CreateLocalDatabase(global.localDatabasePath);
  schema::CreateServerDatabase(global.serverDatabasePath);
  schema::CreateWorkDatabase(global.workDatabasePath);
  schema::AddStation(global.localDatabasePath, 0, u"Radio Proef"_s);
  Use(mode);
}

Station::~Station() {
  global = Globals();
  runtime::SetDrives({});
}

namespace {

void Rename(const QString& folder, const QString& from, const QString& to) {
  if (OnServer()) {
    SharedCluster().Sql(u"ALTER SCHEMA \"%1\" RENAME TO \"%2\""_s.arg(from, to));
  } else if (!QFile::rename(folder + u'/' + from + u".mdb", folder + u'/' + to + u".mdb")) {
    throw std::runtime_error("cannot rename the server database");
  }
}

const QString kServerName = u"OvalistoServer"_s;
const QString kLostName = u"OvalistoServer-weg"_s;

}  // namespace

void Station::LoseServer() const {
  Rename(ServerFolder(), kServerName, kLostName);
}

void Station::FindServer() const {
  Rename(ServerFolder(), kLostName, kServerName);
}

void Station::Use(Mode mode) {
  global.online = mode == Mode::Online;
}

int Station::OnServer(const QString& statement) const {
  return Execute(global.serverDatabasePath, statement);
}
int Station::OnLocal(const QString& statement) const {
  return Execute(global.localDatabasePath, statement);
}
int Station::OnCurrent(const QString& statement) const {
  return Execute(CurrentCatalogue().databasePath, statement);
}
dao::Recordset Station::ServerRows(const QString& select) const {
  return Open(global.serverDatabasePath, select);
}
dao::Recordset Station::LocalRows(const QString& select) const {
  return Open(global.localDatabasePath, select);
}
dao::Recordset Station::CurrentRows(const QString& select) const {
  return Open(CurrentCatalogue().databasePath, select);
}

QStringList Station::Log() const {
  QStringList statements;
  dao::Recordset rows = LocalRows(u"SELECT SqlSyntax FROM tblOfflineLog ORDER BY ID"_s);
  for (; !rows.Eof(); rows.MoveNext())
    statements += rows.Field(u"SqlSyntax"_s).toString();
  return statements;
}

}  // namespace testing_support
