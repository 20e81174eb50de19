// SPDX-License-Identifier: MIT
// A new station in a program folder whose shared databases are on a server.
#include "data/Globals.h"
#include "data/stations/NewStation.h"
#include "platform/dao/Database.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/HostPath.h"
#include "tests/support/Cluster.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using testing_support::SharedCluster;

namespace {

class ServerStation : public testing::Test {
 protected:
  ServerStation() {
    QDir(folder_.path()).mkdir(u"data"_s);
    global = Globals();
    global.programFolder = runtime::PathText(folder_.path());
    global.databasePath = SharedCluster().Url();
  }
  ~ServerStation() override { global = Globals(); }

  bool HasLocal(const QString& number) const {
    return QFile::exists(folder_.filePath(u"data/OvalistoLocal%1.mdb"_s.arg(number)));
  }

  const QTemporaryDir folder_;
};

TEST_F(ServerStation, ItsSharedDatabaseIsMadeOnTheServer) {
  MakeNumberedStation(7, u"Radio Zeven"_s);
  EXPECT_TRUE(HasLocal(u"7"_s));
  EXPECT_EQ(SharedCluster().Sql(u"SELECT obj_description(oid) FROM pg_namespace WHERE nspname = 'OvalistoServer7'"_s),
            QStringList{u"Radio Zeven"_s});
  dao::Database database = dao::OpenDatabase(SharedCluster().Url() + u"\\OvalistoServer7.mdb");
  EXPECT_TRUE(database.OpenRecordset(u"SELECT * FROM tblItems"_s).Eof());
}

// The administrator has made it already.
TEST_F(ServerStation, AnExistingSharedDatabaseIsUsed) {
  MakeNumberedStation(8, u"Radio Acht"_s);
  const QString path = SharedCluster().Url() + u"\\OvalistoServer8.mdb";
  dao::OpenDatabase(path).Execute(u"INSERT INTO tblItems (ID, Naam) VALUES (1, \"Blok\")"_s);
  const QTemporaryDir other;
  QDir(other.path()).mkdir(u"data"_s);
  global.programFolder = runtime::PathText(other.path());
  MakeNumberedStation(8, u"Radio Acht"_s);
  EXPECT_TRUE(QFile::exists(other.filePath(u"data/OvalistoLocal8.mdb"_s)));
  EXPECT_EQ(dao::OpenDatabase(path).OpenRecordset(u"SELECT * FROM tblItems"_s).RecordCount(), 1);
}

TEST_F(ServerStation, WithoutTheRightToMakeItTheErrorNamesTheAdministratorsCommandAndNothingIsMade) {
  SharedCluster().Sql(u"CREATE ROLE els LOGIN"_s);
  global.databasePath.replace(u"planner@"_s, u"els@"_s);
  try {
    MakeNumberedStation(9, u"Radio Negen"_s);
    FAIL() << "no error";
  } catch (const runtime::Error& error) {
    EXPECT_TRUE(error.Description().contains(u"geen rechten"_s)) << qPrintable(error.Description());
    EXPECT_TRUE(error.Description().contains(u"spotrooster-db create "_s + global.databasePath + u" --station 9"));
  }
  EXPECT_FALSE(HasLocal(u"9"_s));
  EXPECT_FALSE(HasLocal(QString()));
}

}  // namespace
