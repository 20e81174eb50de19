// SPDX-License-Identifier: MIT
// The hourglass is shown while a list is read or written, not while another screen is open.
#include "catalogue/frmItemOpruimen.h"
#include "catalogue/frmItemPingles.h"
#include "catalogue/frmItemSpotOpruimen.h"
#include "catalogue/frmItemSpots.h"
#include "catalogue/frmItems.h"
#include "platform/desktop/MessageBox.h"
#include "tests/catalogue/CatalogueTest.h"
#include "tests/support/PointerWatch.h"

#include <QCheckBox>

#include <functional>

using namespace Qt::StringLiterals;
using testing_support::PointerWatch;

class Pointer : public CatalogueTest {
 protected:
  Pointer() {
    AddSpot({1, u"Spot"_s, {}, 1});
    AddItem(1, u"Blok"_s);
    AddPingle(1, u"Jingle"_s);
  }

  // The titles of the error boxes that appear while the hourglass is shown, when `action` runs without the server.
  QStringList WithoutServer(const std::function<void()>& step) const {
    station_.LoseServer();
    const PointerWatch watch(desktop::kAnswerYes);
    step();
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    station_.FindServer();
    return watch.UnderHourglass();
  }
};

TEST_F(Pointer, OpeningAListOrACleanupShowsTheHourglass) {
  const QStringList filling{u"FillLstOverzicht"_s};
  EXPECT_EQ(WithoutServer([] { frmItemSpots(nullptr).Form_Load(); }), filling);
  EXPECT_EQ(WithoutServer([] { frmItems(nullptr).Form_Load(); }), filling);
  EXPECT_EQ(WithoutServer([] { frmItemPingles(nullptr).Form_Load(); }), filling);
  global.gstrOpruimenID = u"1"_s;
  EXPECT_EQ(WithoutServer([] { frmItemSpotOpruimen(nullptr).Form_Load(); }), QStringList{u"GetItemSpotID_Naam"_s});
  EXPECT_EQ(WithoutServer([] { frmItemOpruimen(nullptr).Form_Load(); }), QStringList{u"GetItemNaam"_s});
}

TEST_F(Pointer, TheEditorHasTheArrowAndTheRefillAfterItTheHourglass) {
  frmItems form(nullptr);
  Open(form);
  Select(form, u"Blok"_s);
  bool hourglassInTheEditor = true;
  inTheEditor_ = [&] {
    hourglassInTheEditor = PointerWatch::IsHourglass();
    station_.LoseServer();
  };
  const PointerWatch watch;
  Click(form, u"cmdOpen"_s);
  station_.FindServer();
  EXPECT_FALSE(hourglassInTheEditor);
  EXPECT_EQ(watch.UnderHourglass(), QStringList{u"FillLstOverzicht"_s});
  EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(Pointer, TheRefillAfterACleanupShowsTheHourglass) {
  frmItemSpots form(nullptr);
  Open(form);
  Select(form, u"Spot"_s);
  ModalDriver modal;
  modal.OnNext(u"frmItemSpotOpruimen"_s, [&](QDialog& window) {
    EXPECT_FALSE(PointerWatch::IsHourglass());
    station_.LoseServer();
    Click(window, u"cmdSluiten"_s);
  });
  const PointerWatch watch;
  Click(form, u"cmdVerwijder"_s);
  station_.FindServer();
  EXPECT_EQ(watch.UnderHourglass(), QStringList{u"FillLstOverzicht"_s});
}

TEST_F(Pointer, DeactivatingAndItsRefillShowTheHourglass) {
  frmItemSpots spots(nullptr);
  Open(spots);
  Select(spots, u"Spot"_s);
  EXPECT_EQ(WithoutServer([&] { Click(spots, u"cmdDesaktiveer"_s); }),
            (QStringList{u"Update_tblItemSpots_Aktief"_s, u"FillLstOverzicht"_s}));
}

TEST_F(Pointer, DeletingAJingleShowsTheHourglassItsRefillDoesNot) {
  frmItemPingles form(nullptr);
  Open(form);
  Select(form, u"Jingle"_s);
  EXPECT_EQ(WithoutServer([&] { Click(form, u"cmdVerwijder"_s); }), QStringList{u"Delete_tblBeheer"_s});
}

TEST_F(Pointer, CleaningUpShowsTheHourglass) {
  station_.Use(Station::Mode::Offline);
  AddSpot({1, u"Spot"_s, {}, 1});
  station_.OnLocal(u"INSERT INTO tblOfflineLog (ID, SqlSyntax) VALUES (2147483647, \"vol\")"_s);
  global.gstrOpruimenID = u"1"_s;
  frmItemSpotOpruimen form(nullptr);
  Open(form);
  Child<QCheckBox>(form, u"chkVerwijderID"_s).setChecked(true);
  const PointerWatch watch;
  Click(form, u"cmdOk"_s);
  EXPECT_EQ(watch.UnderHourglass(), QStringList{u"GetNewID"_s});
}
