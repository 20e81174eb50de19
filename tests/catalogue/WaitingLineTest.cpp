// SPDX-License-Identifier: MIT
// The line in the lists while offline changes wait for an export.
#include "catalogue/frmItemPingles.h"
#include "catalogue/frmItemSpots.h"
#include "catalogue/frmItems.h"
#include "tests/catalogue/CatalogueTest.h"

#include <QLabel>
#include <QPushButton>

#include <memory>

using namespace Qt::StringLiterals;

class WaitingChangesInAList : public CatalogueTest {
 protected:
  void Log(int id, const QString& statement) {
    station_.OnLocal(
        u"INSERT INTO tblOfflineLog (ID, SqlSyntax) VALUES (%1, \"%2\")"_s.arg(QString::number(id), statement));
  }
  static QString LineOf(const Form& form) {
    const auto& line = Child<QLabel>(form, u"lblWachten"_s);
    return line.isVisible() ? line.text() : QString();
  }
};

TEST_F(WaitingChangesInAList, IsSilentWhileNothingWaits) {
  frmItems form(nullptr);
  Open(form);
  EXPECT_EQ(LineOf(form), QString());
  EXPECT_FALSE(Child<QPushButton>(form, u"cmdTonen"_s).isVisible());
}

TEST_F(WaitingChangesInAList, OnlineEveryListSaysThatItShowsTheSharedDatabase) {
  Log(1, u"UPDATE tblItemSpots SET Aktief = 0 WHERE ID = 1"_s);
  Log(2, u"UPDATE tblItemSpots SET Aktief = 1 WHERE ID = 1"_s);
  const std::unique_ptr<Form> lists[] = {std::make_unique<frmItems>(nullptr), std::make_unique<frmItemSpots>(nullptr),
                                         std::make_unique<frmItemPingles>(nullptr)};
  for (const std::unique_ptr<Form>& list : lists) {
    Open(*list);
    EXPECT_EQ(LineOf(*list), u"2 wijzigingen wachten op export; deze lijst toont de gedeelde database"_s);
    Click(*list, u"cmdTonen"_s);
    EXPECT_EQ(visits_.takeLast(), u"OfflineLog "_s);
    EXPECT_EQ(editorOwner_, list.get());
  }
}

TEST_F(WaitingChangesInAList, OfflineItAppearsWithTheFirstChange) {
  station_.Use(Station::Mode::Offline);
  AddSpot({1, u"Bakker"_s, {}, 1});
  AddItem(1, u"Ochtend"_s);
  frmItemSpots spots(nullptr);
  Open(spots);
  EXPECT_EQ(LineOf(spots), QString());
  Select(spots, u"Bakker"_s);
  Click(spots, u"cmdDesaktiveer"_s);
  EXPECT_EQ(LineOf(spots), u"1 wijziging wacht op export; na het sluiten toont deze lijst weer de gedeelde database"_s);
  frmItems items(nullptr);
  Open(items);
  EXPECT_EQ(LineOf(items), u"1 wijziging wacht op export; deze lijst toont de kopie op deze computer"_s);
}

TEST_F(WaitingChangesInAList, AnUnreadableLogShowsNoFurtherBox) {
  AddItem(1, u"Ochtend"_s);
  frmItems form(nullptr);
  global.localDatabasePath = u"Q:\\weg.mdb"_s;
  Open(form);
  EXPECT_EQ(Lines(form), QStringList{u"Ochtend"_s});
  EXPECT_EQ(LineOf(form), QString());
  EXPECT_TRUE(boxes_.Shown().empty());
}
