// SPDX-License-Identifier: MIT
#include "export/frmOfflineLog.h"

#include "data/Catalogue.h"
#include "data/Globals.h"
#include "data/Writes.h"
#include "platform/controls/ListBox.h"
#include "platform/desktop/MessageBox.h"
#include "tests/support/Station.h"
#include "tests/support/Ui.h"
#include "tests/support/Waiting.h"

#include <QCheckBox>
#include <QLabel>
#include <QPlainTextEdit>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using controls::ListBox;
using testing_support::Child;
using testing_support::Click;
using testing_support::Station;

namespace {

class OfflineLogWindow : public testing::Test {
 protected:
  void Open() {
    form_.Form_Load();
    form_.show();
    ASSERT_TRUE(WaitUntil([&] { return form_.IsRead(); }));
  }
  ListBox& Changes() const { return Child<ListBox>(form_, u"lstWijzigingen"_s); }
  QString Shown(const QString& field) const { return Child<QPlainTextEdit>(form_, field).toPlainText(); }

  Station station_{Station::Mode::Offline};
  frmOfflineLog form_{nullptr};
};

}  // namespace

TEST_F(OfflineLogWindow, ShowsEachChangeInWordsAndItsSqlWhenAsked) {
  const Catalogue here = CurrentCatalogue();
  ItemSpotRow spot;
  spot.id = 1;
  spot.naam = u"Apotheek"_s;
  spot.eindDatum = 46022;
  spot.aktief = 1;
  ASSERT_TRUE(Insert_tblItemSpots(spot, here.databasePath, here.itemSpots));
  spot.eindDatum = 46037;
  ASSERT_TRUE(Update_tblItemSpots(spot, here.databasePath, here.itemSpots));
  Open();
  ASSERT_EQ(Changes().ListCount(), 2);
  EXPECT_EQ(Changes().Text(0), u"item-spot \"Apotheek\""_s);
  EXPECT_EQ(Changes().Details(0).word, u"nieuw"_s);
  EXPECT_EQ(Changes().Details(1).word, u"gewijzigd"_s);
  EXPECT_EQ(Changes().Details(1).trailing, u"Einddatum"_s);
  EXPECT_EQ(Child<QLabel>(form_, u"lblAantal"_s).text(), u"2 wijzigingen in de volgende export"_s);
  Changes().SetListIndex(1);
  EXPECT_EQ(Shown(u"txtVelden"_s), u"Einddatum: was 31-12-2025, wordt 15-01-2026"_s);
  auto& sql = Child<QPlainTextEdit>(form_, u"txtSql"_s);
  EXPECT_FALSE(sql.isVisible());
  Click(form_, u"chkSql"_s);
  EXPECT_TRUE(sql.isVisible());
  EXPECT_EQ(sql.toPlainText(), station_.Log().last());
  EXPECT_TRUE(sql.isReadOnly());
  EXPECT_EQ(station_.Log().size(), 2) << "looking changes nothing";
}

TEST_F(OfflineLogWindow, AnEmptyLogSaysSo) {
  Open();
  EXPECT_EQ(Changes().ListCount(), 0);
  EXPECT_EQ(Changes().EmptyText(), u"Er wacht niets op een export."_s);
  EXPECT_EQ(Shown(u"txtVelden"_s), QString());
}

TEST_F(OfflineLogWindow, ALogThatCannotBeReadSaysWhyWithoutABox) {
  const desktop::MessageBoxScript boxes;
  global.localDatabasePath = u"Q:\\weg.mdb"_s;
  Open();
  EXPECT_TRUE(Changes().EmptyText().startsWith(u"Het logboek kan niet gelezen worden.\n"_s));
  EXPECT_TRUE(boxes.Shown().empty());
}
