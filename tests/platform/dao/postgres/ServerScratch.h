// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/Database.h"
#include "platform/dao/postgres/Connection.h"
#include "tests/platform/dao/Scratch.h"
#include "tests/support/Cluster.h"

#include <gtest/gtest.h>

// A test with a new schema on a cluster, with tblSpots of three rows: 1 "Appel" 1, 2 "bier" 0, 3 "Cola" 1.
class ServerScratch : public testing::Test {
 protected:
  ServerScratch() : ServerScratch(testing_support::SharedCluster()) {}
  explicit ServerScratch(testing_support::Cluster& cluster) : cluster_(cluster), schema_(NewSchema()) {
    dao::CreateDatabase(Path());
    dao::Database database = Open();
    database.CreateTable(scratch::Spots());
    database.Execute(QStringLiteral("INSERT INTO tblSpots (ID, Naam, Aktief) VALUES (1, \"Appel\", 1)"));
    database.Execute(QStringLiteral("INSERT INTO tblSpots (ID, Naam, Aktief) VALUES (2, \"bier\", 0)"));
    database.Execute(QStringLiteral("INSERT INTO tblSpots (ID, Naam, Aktief) VALUES (3, \"Cola\", 1)"));
  }

  static QString NewSchema() {
    static int number = 0;
    return QStringLiteral("Zender%1").arg(++number);
  }

  testing_support::Cluster& Server() const { return cluster_; }
  QString Schema() const { return schema_; }
  QString Path() const { return PathBy(cluster_.Url()); }
  QString PathBy(const QString& url) const { return url + QLatin1Char('\\') + schema_ + QLatin1String(".mdb"); }
  // The same database through another socket.
  QString PathBehind(const QString& socketFolder) const {
    return PathBy(QStringLiteral("postgresql://planner@/postgres?host=") + socketFolder);
  }
  dao::Database Open() const { return dao::OpenDatabase(Path()); }
  int Count() const {
    return static_cast<int>(scratch::Rows(Open(), QStringLiteral("SELECT ID FROM tblSpots")).size());
  }

 private:
  testing_support::Cluster& cluster_;
  QString schema_;
};
