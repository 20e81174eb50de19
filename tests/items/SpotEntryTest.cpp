// SPDX-License-Identifier: MIT
#include "data/Messages.h"
#include "platform/controls/Marks.h"
#include "platform/desktop/MessageBox.h"
#include "tests/items/ItemEditor.h"

#include <QGuiApplication>
#include <QIcon>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPalette>
#include <QTest>
#include <QTreeView>

#include <functional>

using namespace Qt::StringLiterals;
using testing_support::Child;
using testing_support::ModalDriver;

namespace {

// Opens the entry dialog with the item editor's buttons and uses it.
class SpotEntry : public ItemEditor {
 protected:
  void Entry(const QString& button, const std::function<void(QDialog&)>& step) {
    ModalDriver driver;
    driver.OnNext(u"frmItemsDetailOpt1"_s, step);
    Click(button);
  }
  static void Choose(QDialog& dialog, int spot) {
    Child<controls::ComboBox>(dialog, u"cboItemSpot"_s).SelectWhereItemData(spot);
    testing_support::Click(dialog, u"cmdOk"_s);
  }
};

}  // namespace

TEST_F(SpotEntry, HasItsControls) {
  OpenNew();
  Entry(u"cmdOpt1Toevoegen"_s, [](QDialog& dialog) {
    EXPECT_EQ(dialog.windowTitle(), u"Item-spot ... toevoegen"_s);
    const auto& combo = Child<controls::ComboBox>(dialog, u"cboItemSpot"_s);
    EXPECT_EQ(combo.ListCount(), 3);
    EXPECT_EQ(combo.ListIndex(), -1);
    Child<QPushButton>(dialog, u"cmdOk"_s);
    testing_support::Click(dialog, u"cmdAnnuleren"_s);
  });
}

TEST_F(SpotEntry, SpotsAreSortedByName) {
  station_.OnServer(u"INSERT INTO tblItemSpots (ID, Naam, Aktief) VALUES (20, \"Appel\", 1)"_s);
  OpenNew();
  Entry(u"cmdOpt1Toevoegen"_s, [this](QDialog& dialog) {
    EXPECT_EQ(dialog.parentWidget(), editor_.get());
    const auto& combo = Child<controls::ComboBox>(dialog, u"cboItemSpot"_s);
    ASSERT_EQ(combo.ListCount(), 4);
    EXPECT_EQ(combo.Text(1), u"Appel"_s);
    EXPECT_EQ(combo.ItemData(1), 20);
    dialog.close();
  });
}

TEST_F(SpotEntry, InactiveSpotsAreOfferedToo) {
  station_.OnServer(u"UPDATE tblItemSpots SET Aktief = 0 WHERE ID = 2"_s);
  OpenNew();
  Entry(u"cmdOpt1Toevoegen"_s, [](QDialog& dialog) {
    EXPECT_EQ(Child<controls::ComboBox>(dialog, u"cboItemSpot"_s).ListCount(), 3);
    dialog.close();
  });
}

TEST_F(SpotEntry, TheSameSpotMayBeAddedTwiceAndBothLinksAreSaved) {
  OpenNew();
  Edit(u"txtNaam"_s).setText(u"Blok"_s);
  for (int i = 0; i < 2; ++i) {
    Entry(u"cmdOpt1Toevoegen"_s, [](QDialog& dialog) { Choose(dialog, 2); });
  }
  ASSERT_EQ(List().ListCount(), 2);
  EXPECT_EQ(List().Text(1), u"Bakker"_s);
  Click(u"cmdOk"_s);
  dao::Recordset rows = station_.ServerRows(u"SELECT * FROM tblItemsItemSpots ORDER BY ItemSpotOrder"_s);
  ASSERT_EQ(rows.RecordCount(), 2);
  for (int order = 1; order <= 2; ++order, rows.MoveNext()) {
    EXPECT_EQ(rows.Field(u"ItemSpotOrder"_s).toInt(), order);
    EXPECT_EQ(rows.Field(u"ItemSpotID"_s).toInt(), 2);
  }
}

TEST_F(SpotEntry, ASpotAddedInTheMeantimeCountsInTheTotal) {
  OpenNew();
  station_.OnServer(u"INSERT INTO tblItemSpots (ID, Naam, LengteSec, Aktief) VALUES (20, \"Vers\", 60, 1)"_s);
  Entry(u"cmdOpt1Toevoegen"_s, [](QDialog& dialog) { Choose(dialog, 20); });
  EXPECT_EQ(testing_support::Child<QLabel>(*editor_, u"lblOpt1Totaal"_s).text(), u"1 item-spot, samen 1:00"_s);
}

namespace {

QTreeView& Choices(QDialog& dialog) {
  return Child<QTreeView>(dialog, u"lstMeerdere"_s);
}

// Goes to the line with this name and presses Space.
void CheckSpot(QDialog& dialog, const QString& name) {
  QTreeView& list = Choices(dialog);
  for (int row = 0; row < list.model()->rowCount(); ++row) {
    if (list.model()->index(row, 0).data().toString() != name) continue;
    list.setCurrentIndex(list.model()->index(row, 0));
    list.setFocus();
    QTest::keyClick(&list, Qt::Key_Space);
    return;
  }
  ADD_FAILURE() << name.toStdString();
}

}  // namespace

TEST_F(SpotEntry, SeveralSpotsAreAddedInTheOrderOfChecking) {
  InsertListItem(1, u"Blok"_s, {1});
  Open(u"1"_s);
  Entry(u"cmdOpt1Toevoegen"_s, [](QDialog& dialog) {
    const auto& combo = Child<controls::ComboBox>(dialog, u"cboItemSpot"_s);
    auto& add = Child<QPushButton>(dialog, u"cmdToevoegen"_s);
    dialog.activateWindow();  // keys of the list are shortcuts
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    EXPECT_FALSE(add.isEnabled());
    EXPECT_EQ(Choices(dialog).model()->rowCount(), 3);
    CheckSpot(dialog, combo.Text(2));
    CheckSpot(dialog, combo.Text(0));
    CheckSpot(dialog, combo.Text(1));
    EXPECT_EQ(add.text().remove(u'&'), u"3 toevoegen"_s);
    CheckSpot(dialog, combo.Text(0));
    EXPECT_EQ(add.text().remove(u'&'), u"2 toevoegen"_s);
    EXPECT_EQ(Child<QLabel>(dialog, u"lblGekozen"_s).text(), u"1 %1, 2 %2"_s.arg(combo.Text(2), combo.Text(1)));
    EXPECT_EQ(combo.ListIndex(), -1);
    QTest::keyClick(&Choices(dialog), Qt::Key_Return);
    EXPECT_FALSE(dialog.isVisible());
  });
  ASSERT_EQ(List().ListCount(), 3);
  Entry(u"cmdOpt1Toevoegen"_s, [this](QDialog& dialog) {
    const auto& combo = Child<controls::ComboBox>(dialog, u"cboItemSpot"_s);
    EXPECT_EQ(List().Text(1), combo.Text(2));
    EXPECT_EQ(List().ItemData(1), combo.ItemData(2));
    EXPECT_EQ(List().ItemData(2), combo.ItemData(1));
    dialog.close();
  });
}

TEST_F(SpotEntry, SearchHidesSpotsAndKeepsTheirCheckMarks) {
  station_.OnServer(u"UPDATE tblItemSpots SET Naam = \"Bakker\", Aktief = 0 WHERE ID = 2"_s);
  OpenNew();
  Entry(u"cmdOpt1Toevoegen"_s, [](QDialog& dialog) {
    auto& field = Child<QLineEdit>(dialog, u"txtZoek"_s);
    QTest::keyClicks(&field, u"BAKK"_s);
    ASSERT_EQ(Choices(dialog).model()->rowCount(), 1);
    const auto state = [&] { return Choices(dialog).model()->index(0, 1).data().toString(); };
    EXPECT_TRUE(QTest::qWaitFor([&] { return state() == u"niet aktief"_s; })) << state().toStdString();
    EXPECT_FALSE(Choices(dialog).model()->index(0, 0).data(Qt::DecorationRole).isNull());
    CheckSpot(dialog, u"Bakker"_s);
    field.setText(u"niets daarvan"_s);
    EXPECT_EQ(Choices(dialog).model()->rowCount(), 0);
    testing_support::Click(dialog, u"cmdToevoegen"_s);
  });
  ASSERT_EQ(List().ListCount(), 1);
  EXPECT_EQ(List().ItemData(0), 2);
}

// Qt keeps a key of every pixmap of an icon that was painted.
TEST_F(SpotEntry, MarksOfStatesAreDrawnWithoutPixmaps) {
  station_.OnServer(u"UPDATE tblItemSpots SET Aktief = 0 WHERE ID = 2"_s);
  OpenNew();
  Entry(u"cmdOpt1Toevoegen"_s, [](QDialog& dialog) {
    Child<QLineEdit>(dialog, u"txtZoek"_s).setText(u"bakker"_s);
    const auto icon = [&] { return Choices(dialog).model()->index(0, 0).data(Qt::DecorationRole).value<QIcon>(); };
    ASSERT_TRUE(QTest::qWaitFor([&] { return !icon().isNull(); }));
    EXPECT_TRUE(icon().availableSizes().isEmpty());
    EXPECT_EQ(icon().actualSize(QSize(32, 32)), QSize(controls::kMarkSize, controls::kMarkSize));
    const auto colourIn = [&](QIcon::Mode mode) {
      const QImage mark = icon().pixmap(QSize(14, 14), mode).toImage();
      return mark.pixelColor(mark.rect().center());
    };
    const QPalette palette = QGuiApplication::palette();
    EXPECT_EQ(colourIn(QIcon::Normal), controls::ToneColour(controls::LineTone::Quiet, palette));
    EXPECT_EQ(colourIn(QIcon::Selected), palette.color(QPalette::HighlightedText));
    dialog.close();
  });
}

TEST_F(SpotEntry, OkAndCancelAreAboutTheComboAlone) {
  OpenNew();
  const desktop::MessageBoxScript boxes;
  Entry(u"cmdOpt1Toevoegen"_s, [&](QDialog& dialog) {
    CheckSpot(dialog, Child<controls::ComboBox>(dialog, u"cboItemSpot"_s).Text(0));
    testing_support::Click(dialog, u"cmdOk"_s);
    EXPECT_EQ(boxes.Shown().size(), 1u);  // nothing chosen in the combo box
    EXPECT_TRUE(dialog.isVisible());
    testing_support::Click(dialog, u"cmdAnnuleren"_s);
  });
  EXPECT_EQ(boxes.Shown().size(), 1u);
  EXPECT_EQ(List().ListCount(), 0);
}

TEST_F(SpotEntry, ChangingAnEntryOffersTheComboAlone) {
  InsertListItem(1, u"Blok"_s, {1});
  Open(u"1"_s);
  List().SetListIndex(0);
  Entry(u"cmdOpt1Wijzigen"_s, [](QDialog& dialog) {
    EXPECT_FALSE(Choices(dialog).isVisible());
    dialog.close();
  });
}

TEST_F(SpotEntry, AChangeReplacesOnlyTheShownName) {
  InsertListItem(1, u"Blok"_s, {1, 2});
  Open(u"1"_s);
  List().SetListIndex(0);
  Entry(u"cmdOpt1Wijzigen"_s, [](QDialog& dialog) {
    EXPECT_EQ(dialog.windowTitle(), u"Item-spot ... wijzigen"_s);
    EXPECT_EQ(Child<controls::ComboBox>(dialog, u"cboItemSpot"_s).currentText(), u"Aardbeien"_s);
    Choose(dialog, 3);
  });
  EXPECT_EQ(List().Text(0), u"Café"_s);
  EXPECT_EQ(List().ItemData(0), 1);
  Click(u"cmdOk"_s);
  Open(u"1"_s);
  EXPECT_EQ(List().Text(0), u"Aardbeien"_s);
}

TEST_F(SpotEntry, AChangeOfASpotListedTwiceReplacesTheFirstName) {
  InsertListItem(1, u"Blok"_s, {2, 1, 2});
  Open(u"1"_s);
  List().SetListIndex(2);
  Entry(u"cmdOpt1Wijzigen"_s, [](QDialog& dialog) { Choose(dialog, 3); });
  EXPECT_EQ(List().Text(0), u"Café"_s);
  EXPECT_EQ(List().Text(1), u"Aardbeien"_s);
  EXPECT_EQ(List().Text(2), u"Bakker"_s);
}

TEST_F(SpotEntry, AnAddedEntryRaisesTheMaximum) {
  InsertListItem(1, u"Blok"_s, {1});
  Open(u"1"_s);
  Option(u"optMeerdereSpots"_s).click();
  Entry(u"cmdOpt1Toevoegen"_s, [](QDialog& dialog) { Choose(dialog, 2); });
  EXPECT_EQ(Edit(u"txtMaxAantalSpots"_s).text(), u"2"_s);
}

TEST_F(SpotEntry, AnEntryOfADeletedSpotOpensWithoutASelection) {
  InsertListItem(1, u"Blok"_s, {1});
  Open(u"1"_s);
  station_.OnServer(u"DELETE FROM tblItemSpots WHERE ID = 1"_s);
  List().SetListIndex(0);
  Entry(u"cmdOpt1Wijzigen"_s, [](QDialog& dialog) {
    EXPECT_EQ(Child<controls::ComboBox>(dialog, u"cboItemSpot"_s).ListIndex(), -1);
    dialog.close();
  });
}

TEST_F(SpotEntry, WithoutAChoiceOkShowsTheMessageAndStaysOpen) {
  OpenNew();
  Entry(u"cmdOpt1Toevoegen"_s, [](QDialog& dialog) {
    const desktop::MessageBoxScript boxes;
    testing_support::Click(dialog, u"cmdOk"_s);
    EXPECT_EQ(boxes.Last().text, GetMsgElements(1501, u"Item-spot"_s, u"spot"_s).text);
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(dialog.focusWidget()->objectName(), u"cboItemSpot"_s);
    desktop::MessageBoxScript closing({kAnswerNo});
    dialog.close();
  });
  EXPECT_EQ(List().ListCount(), 0);
}

TEST_F(SpotEntry, CancellingAfterAChoiceAsksAndYesAdds) {
  OpenNew();
  Entry(u"cmdOpt1Toevoegen"_s, [](QDialog& dialog) {
    Child<controls::ComboBox>(dialog, u"cboItemSpot"_s).SelectWhereItemData(3);
    desktop::MessageBoxScript boxes({kAnswerYes});
    testing_support::Click(dialog, u"cmdAnnuleren"_s);
    EXPECT_EQ(boxes.Shown().size(), 1U);
  });
  ASSERT_EQ(List().ListCount(), 1);
  EXPECT_EQ(List().ItemData(0), 3);
}

TEST_F(SpotEntry, CancellingUntouchedAsksNothing) {
  InsertListItem(1, u"Blok"_s, {2});
  Open(u"1"_s);
  List().SetListIndex(0);
  const desktop::MessageBoxScript boxes;
  Entry(u"cmdOpt1Wijzigen"_s, [](QDialog& dialog) { testing_support::Click(dialog, u"cmdAnnuleren"_s); });
  EXPECT_TRUE(boxes.Shown().empty());
}
