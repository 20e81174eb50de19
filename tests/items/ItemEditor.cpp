// SPDX-License-Identifier: MIT
#include "tests/items/ItemEditor.h"

#include "data/Catalogue.h"
#include "data/Globals.h"

using namespace Qt::StringLiterals;
using testing_support::Child;

ItemEditor::ItemEditor(testing_support::Station::Mode mode) : station_(mode) {
  const Catalogue catalogue = CurrentCatalogue();
  const QStringList spots = {u"Aardbeien"_s, u"Bakker"_s, u"Café"_s};
  const QStringList jingles = {u"Opener"_s, u"Tussen"_s, u"Sluiter"_s};
  for (int i = 0; i < 3; ++i) {
    station_.OnCurrent(
        u"INSERT INTO %1 (ID, Naam, Path, LengteSec, AantalGedraaid, Aktief) VALUES (%2, \"%3\", \"p%2\", %4, 9, 1)"_s
            .arg(catalogue.itemSpots, QString::number(i + 1), spots[i], QString::number(30 + i)));
    station_.OnCurrent(u"INSERT INTO %1 (ID, Naam, Path, Aktief) VALUES (%2, \"%3\", \"j\", 1)"_s.arg(
        catalogue.itemPingles, QString::number(i + 11), jingles[i]));
  }
}

void ItemEditor::Open(const QString& selected) {
  global.gstrSelectedID = selected;
  editor_ = std::make_unique<frmItemsDetail>(nullptr);
  editor_->Form_Load();
  editor_->show();
}

void ItemEditor::OpenNew() {
  Open(QString::fromUtf16(kNewRecord));
}

controls::LedPanel& ItemEditor::Mix() const {
  return Child<controls::LedPanel>(*editor_, u"ledMix"_s);
}
controls::ListBox& ItemEditor::List() const {
  return Child<controls::ListBox>(*editor_, u"lstOpt1ItemSpots"_s);
}

void ItemEditor::Click(const QString& button) const {
  testing_support::Click(*editor_, button);
}

void ItemEditor::FillListItem() const {
  Edit(u"txtNaam"_s).setText(u"Blok"_s);
  List().AddItem(u"Aardbeien"_s, 1);
}

void ItemEditor::FillPatternItem() const {
  Edit(u"txtNaam"_s).setText(u"Blok"_s);
  Option(u"opt2"_s).setChecked(true);
  Edit(u"txtOpt2Directory"_s).setText(u"D:\\Spots"_s);
  Edit(u"txtOpt2VastNaamGedeelte"_s).setText(u"blok"_s);
  Combo(u"cboOpt2VariabelNaamGedeelte"_s).SetListIndex(0);
  Edit(u"txtOpt2FileExtensie"_s).setText(u"wav"_s);
}

void ItemEditor::InsertListItem(int id, const QString& naam, const QList<int>& spots) const {
  const Catalogue catalogue = CurrentCatalogue();
  station_.OnCurrent(
      u"INSERT INTO %1 (ID, Naam, ItemSpotsOptID, OptMeerdereSpots, Aktief, Locked) VALUES (%2, \"%3\", 1, "
      u"0, 1, 0)"_s.arg(catalogue.items, QString::number(id), naam));
  int order = 0;
  for (const int spot : spots) {
    station_.OnCurrent(u"INSERT INTO %1 (ItemID, ItemSpotOrder, ItemSpotID) VALUES (%2, %3, %4)"_s.arg(
        catalogue.itemsItemSpots, QString::number(id), QString::number(++order), QString::number(spot)));
  }
}

QList<int> ItemEditor::SavedSpots() const {
  QList<int> spots;
  dao::Recordset rows =
      station_.ServerRows(u"SELECT ItemSpotID FROM tblItemsItemSpots WHERE ItemID = 1 ORDER BY ItemSpotOrder"_s);
  for (; !rows.Eof(); rows.MoveNext())
    spots += rows.Field(u"ItemSpotID"_s).toInt();
  return spots;
}
