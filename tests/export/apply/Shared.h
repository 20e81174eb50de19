// SPDX-License-Identifier: MIT
#pragma once

#include "export/apply/Apply.h"
#include "tests/export/apply/Workstation.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

// A shared database with a few records, and workstations that work offline from it. In a run on a server (Cluster.h)
// the database is there.
class SharedStation : public testing::Test {
 protected:
  SharedStation();

  // Spots 1 "Bakker", 2 "Slager" and 3 "Kapper", jingles 1 and 2, item 1 "Ochtend" with spots 1 and 2.
  void Fill();

  const QString& Server() const { return server_; }
  QString Folder(const QString& name) const;
  // A workstation whose copies are those of the server now.
  Workstation At(const QString& name) const;

  apply::Result Process(const QString& path, const QString& source, bool outOfOrder = false) const;
  apply::Result Process(Workstation& from) const { return Process(from.Export(), from.Name()); }
  QString ErrorOf(const QString& path, const QString& source = QStringLiteral("A")) const;

  // The rows of a SELECT as texts, their fields joined by "|"; NULL is "-".
  QStringList Rows(const QString& select) const;
  QStringList Spots() const { return Rows(QStringLiteral("SELECT ID, Naam FROM tblItemSpots ORDER BY ID")); }
  QStringList Links() const {
    return Rows(
        QStringLiteral("SELECT ItemID, ItemSpotOrder, ItemSpotID FROM tblItemsItemSpots "
                       "ORDER BY ItemID, ItemSpotOrder"));
  }
  int OnServer(const QString& statement) const;

 private:
  QTemporaryDir folder_;
  QString server_;
};

ItemSpotRow NewSpot(qint32 id, const QString& naam);
// The texts of the lines of that kind.
QStringList Texts(const apply::Result& result, apply::What what);
