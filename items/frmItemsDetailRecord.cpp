// SPDX-License-Identifier: MIT
// The item editor's record: filling, checking, saving, and the block with unsaved values.
#include "data/Globals.h"
#include "data/ItemRules.h"
#include "data/Lookups.h"
#include "data/SpotNames.h"
#include "data/Writes.h"
#include "export/playout/BlockReader.h"
#include "items/frmItemsDetail.h"
#include "items/ui_frmItemsDetail.h"
#include "platform/dao/Database.h"
#include "platform/desktop/WaitPointer.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Trapped.h"

#include <optional>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;
using runtime::Trapped;

namespace {

constexpr qint32 kNoSpot = -10000;
constexpr qint32 kNoContentOption = 0;  // an item that was saved without a content option

void AddNumbered(controls::ComboBox& combo, const QStringList& texts) {
  combo.Clear();
  for (int i = 0; i < texts.size(); ++i)
    combo.AddItem(texts[i], i + 1);
}

// The spots of an item's links.
std::vector<std::int64_t> SpotsIn(dao::Recordset links) {
  std::vector<std::int64_t> spots;
  for (; !links.Eof(); links.MoveNext()) {
    const QVariant spot = links.Field(u"ItemSpotID"_s);
    if (runtime::IsNumeric(spot)) spots.push_back(runtime::ToLong(spot));
  }
  return spots;
}

// The number may be incomplete input.
qint32 NumberIn(const QLineEdit& field) {
  bool whole = false;
  const qint32 number = field.text().trimmed().toInt(&whole);
  return whole ? number : 0;
}

}  // namespace

void frmItemsDetail::InitForm() {
  Trapped(__func__, [this] {
    setWindowTitle(isNew_ ? u"Item ... nieuw"_s : u"Item ... detail"_s);
    lengths_.Forget();
    FillCboOpt2VariabelNaamGedeelte();
    FillCboOpt2Eerstedagvanweek();
    if (!FillCboPingles()) MarkIncomplete();
  });
}

void frmItemsDetail::FillCboOpt2VariabelNaamGedeelte() {
  Trapped(__func__, [this] {
    AddNumbered(*ui_->cboOpt2VariabelNaamGedeelte, {u"ddmmyyyy"_s, u"ddmmyyyyhh"_s, u"ww"_s, u"mm"_s});
  });
}

void frmItemsDetail::FillCboOpt2Eerstedagvanweek() {
  Trapped(__func__, [this] {
    AddNumbered(*ui_->cboOpt2Eerstedagvanweek,
                {u"Zondag"_s, u"Maandag"_s, u"Dinsdag"_s, u"Woensdag"_s, u"Donderdag"_s, u"Vrijdag"_s, u"Zaterdag"_s});
  });
}

// False when the jingles could not be read; the combos are then unchanged.
bool frmItemsDetail::FillCboPingles() {
  return Trapped(__func__, false, [this] {
    const Catalogue catalogue = CurrentCatalogue();
    dao::Database database = dao::OpenDatabase(catalogue.databasePath);
    dao::Recordset rows =
        database.OpenRecordset(u"SELECT ID, Naam AS Code FROM "_s + catalogue.itemPingles + u" ORDER BY Naam");
    std::vector<controls::ComboBox::Line> lines;
    for (; !rows.Eof(); rows.MoveNext()) {
      lines.push_back({rows.Field(u"Code"_s).toString(), rows.Field(u"ID"_s).toLongLong()});
    }
    for (controls::ComboBox* combo : {ui_->cboOpenerPingle, ui_->cboMiddenPingle, ui_->cboSluiterPingle}) {
      combo->Refill(lines);
    }
    return true;
  });
}

void frmItemsDetail::FillForm() {
  Trapped(__func__, [this] {
    if (isNew_) {
      ui_->chkAktief->setChecked(true);
      ui_->opt1->setChecked(true);
      ui_->opt1Spot->setChecked(true);
    } else {
      const dao::Recordset row = ReadItem();
      if (!(row.Bof() && row.Eof())) FillFields(row);
    }
    MarkLoaded();
    KeepUntracked();
  });
}

dao::Recordset frmItemsDetail::ReadItem() const {
  const Catalogue catalogue = CurrentCatalogue();
  dao::Database database = dao::OpenDatabase(catalogue.databasePath);
  return database.OpenRecordset(u"SELECT "_s + catalogue.items + u".* From " + catalogue.items + u" WHERE " +
                                catalogue.items + u".ID = " + QString::number(id_));
}

void frmItemsDetail::FillFields(const dao::Recordset& row) {
  const QVariant naam = row.Field(u"Naam"_s);
  if (!naam.isNull()) ui_->txtNaam->setText(naam.toString());
  const QVariant aktief = row.Field(u"Aktief"_s);
  if (!aktief.isNull()) ui_->chkAktief->setChecked(runtime::ToLong(aktief) != 0);
  const QVariant locked = row.Field(u"Locked"_s);
  if (!locked.isNull()) locked_ = runtime::ToLong(locked);
  isLocked_ = locked_ != 0;
  FillContentOption(row);
  const QVariant several = row.Field(u"OptMeerdereSpots"_s);
  if (!several.isNull()) (runtime::ToLong(several) != 0 ? ui_->optMeerdereSpots : ui_->opt1Spot)->setChecked(true);
  const QVariant count = row.Field(u"AantalSpots"_s);
  if (!count.isNull()) ui_->txtAantalSpots->setText(count.toString());
  const QVariant most = row.Field(u"MaxAantalSpots"_s);
  if (!most.isNull()) ui_->txtMaxAantalSpots->setText(most.toString());
  const QVariant random = row.Field(u"ChkRandomizeMeerdereSpots"_s);
  if (!random.isNull()) ui_->chkRandomizeMeerdereSpots->setChecked(runtime::ToLong(random) != 0);
  FillJingle(row.Field(u"Opener"_s), u"cboOpenerPingle"_s, *ui_->chkOpenerPingle);
  FillJingle(row.Field(u"Midden"_s), u"cboMiddenPingle"_s, *ui_->chkMiddenPingle);
  FillJingle(row.Field(u"Sluiter"_s), u"cboSluiterPingle"_s, *ui_->chkSluiterPingle);
}

void frmItemsDetail::FillContentOption(const dao::Recordset& row) {
  const QVariant value = row.Field(u"ItemSpotsOptID"_s);
  const qint32 option = value.isNull() ? kNoContentOption : runtime::ToLong(value);
  if (option == 1) {
    ui_->opt1->setChecked(true);
    if (!FillFraItemSpots()) MarkIncomplete();
  } else if (option == 2) {
    FillPattern(row);
  } else if (option != kNoContentOption) {
    throw runtime::Error(
        u"Dit item wordt gevuld op een manier die dit programma niet kent (ItemSpotsOptID = %1)."_s.arg(option));
  }
}

void frmItemsDetail::FillPattern(const dao::Recordset& row) {
  ui_->opt2->setChecked(true);
  const auto fillText = [&row](const QString& field, QLineEdit* box) {
    if (const QVariant value = row.Field(field); !value.isNull()) box->setText(value.toString());
  };
  fillText(u"Opt2Directory"_s, ui_->txtOpt2Directory);
  fillText(u"Opt2VastNaamGedeelte"_s, ui_->txtOpt2VastNaamGedeelte);
  fillText(u"Opt2FileExtensie"_s, ui_->txtOpt2FileExtensie);
  const auto select = [&](const QString& field, const QString& combo) {
    if (const QVariant value = row.Field(field); !value.isNull()) SetCboTextWhereID(combo, runtime::ToLong(value));
  };
  select(u"Opt2VariabelNaamGedeelte"_s, u"cboOpt2VariabelNaamGedeelte"_s);
  select(u"Opt2Eerstedagvanweek"_s, u"cboOpt2Eerstedagvanweek"_s);
  if (const QVariant mix = row.Field(u"Opt2MixPunt"_s); !mix.isNull()) {
    storedMix_ = runtime::ToLong(mix);
    ui_->ledMix->SetValue(storedMix_);
    shownMix_ = ui_->ledMix->Value();
  }
}

// The check box first: while it is unchecked its combo is cleared and locked.
void frmItemsDetail::FillJingle(const QVariant& id, const QString& combo, QCheckBox& check) {
  if (id.isNull()) return;
  SetCboTextWhereID(combo, runtime::ToLong(id));
  if (findChild<controls::ComboBox*>(combo)->currentText().isEmpty()) return;
  check.setChecked(true);
}

// A link to a deleted spot is skipped, and so removed at the next save. False when a spot could not be read: saving the
// shown list would lose that link.
bool frmItemsDetail::FillFraItemSpots() {
  return Trapped(__func__, false, [this] {
    const Catalogue catalogue = CurrentCatalogue();
    const QString& link = catalogue.itemsItemSpots;
    dao::Database database = dao::OpenDatabase(catalogue.databasePath);
    dao::Recordset rows = database.OpenRecordset(u"SELECT "_s + link + u".ItemSpotOrder, " + link +
                                                 u".ItemSpotID From " + link + u" WHERE " + link + u".ItemID = " +
                                                 QString::number(id_) + u" ORDER BY " + link + u".ItemSpotOrder");
    const SpotNames names(catalogue.databasePath, catalogue.itemSpots, SpotsIn(rows));
    std::vector<controls::ListBox::Line> lines;
    bool complete = true;
    for (; !rows.Eof() && complete; rows.MoveNext()) {
      const QVariant spot = rows.Field(u"ItemSpotID"_s);
      const qint32 spotID = runtime::IsNumeric(spot) ? runtime::ToLong(spot) : kNoSpot;
      const QString naam = names.NameOf(spotID);
      complete = !naam.isNull();
      if (!naam.isEmpty() && spotID != kNoSpot) lines.push_back({naam, spotID});
    }
    ui_->lstOpt1ItemSpots->AddItems(std::move(lines));
    return complete;
  });
}

bool frmItemsDetail::OpslaanProceed() {
  return Trapped(__func__, false, [this] {
    ItemInput input;
    input.naam = ui_->txtNaam->text();
    input.hasList = ui_->opt1->isChecked();
    input.listedSpots = ui_->lstOpt1ItemSpots->ListCount();
    input.hasPattern = ui_->opt2->isChecked();
    input.directory = ui_->txtOpt2Directory->text();
    input.fixedPart = ui_->txtOpt2VastNaamGedeelte->text();
    input.hasVariablePart = ui_->cboOpt2VariabelNaamGedeelte->ListIndex() != -1;
    input.extension = ui_->txtOpt2FileExtensie->text();
    input.severalSpots = ui_->optMeerdereSpots->isChecked();
    input.aantalSpots = ui_->txtAantalSpots->text();
    input.maxAantalSpots = ui_->txtMaxAantalSpots->text();
    return Accept(CheckItem(input, [this] { return IsDuplicateCode(); }));
  });
}

bool frmItemsDetail::IsDuplicateCode() {
  return Trapped(__func__, false, [this] {
    const Catalogue catalogue = CurrentCatalogue();
    return NameExists(catalogue.databasePath, catalogue.items, ui_->txtNaam->text(), isNew_, id_);
  });
}

void frmItemsDetail::Opslaan() {
  isDirty_ = true;  // until all steps succeeded
  Trapped(__func__, [this] {
    if (isLocked_) return;
    const Catalogue catalogue = CurrentCatalogue();
    const desktop::WaitPointer wait;
    RequireLoaded();
    RequireStillThere();
    const auto succeeded = WriteRecord(catalogue.databasePath, catalogue.items, [&](qint32 id) {
      const auto write = isNew_ ? Insert_tblItems : Update_tblItems;
      return global.lastResult = write(ValuesOnScreen(id), catalogue.databasePath, catalogue.items);
    });
    if (!succeeded.value_or(false)) return;
    if (WriteLinks(catalogue)) isDirty_ = false;
  });
}

// With the jingles and spots by their names.
StoredValues frmItemsDetail::ReadStoredValues() const {
  const Catalogue catalogue = CurrentCatalogue();
  StoredValues values =
      ValuesOf(ReadItem(), {u"Naam"_s, u"ItemSpotsOptID"_s, u"Opt2Directory"_s, u"Opt2VastNaamGedeelte"_s,
                            u"Opt2VariabelNaamGedeelte"_s, u"Opt2FormatGedeelte"_s, u"Opt2Eerstedagvanweek"_s,
                            u"Opt2FileExtensie"_s, u"Opt2MixPunt"_s, u"OptMeerdereSpots"_s, u"AantalSpots"_s,
                            u"MaxAantalSpots"_s, u"ChkRandomizeMeerdereSpots"_s, u"Aktief"_s, u"Locked"_s});
  if (values.isEmpty()) return values;
  const auto nameOf = [catalogue](const QVariant& id, const QString& table) -> QString {
    if (!runtime::IsNumeric(id)) return u"leeg"_s;
    const QString naam = GetItemSpotID_Naam(runtime::ToLong(id), catalogue.databasePath, table);
    return naam.isEmpty() ? id.toString() : naam;
  };
  const dao::Recordset item = ReadItem();
  for (const QString& jingle : {u"Opener"_s, u"Midden"_s, u"Sluiter"_s}) {
    const QVariant id = item.Field(jingle);
    values += {jingle, id, [=] { return nameOf(id, catalogue.itemPingles); }};
  }
  const QString& link = catalogue.itemsItemSpots;
  dao::Recordset rows =
      dao::OpenDatabase(catalogue.databasePath)
          .OpenRecordset(u"SELECT "_s + link + u".ItemSpotID From " + link + u" WHERE " + link + u".ItemID = " +
                         QString::number(id_) + u" ORDER BY " + link + u".ItemSpotOrder");
  QVariantList spots;
  for (; !rows.Eof(); rows.MoveNext())
    spots += rows.Field(u"ItemSpotID"_s);
  values += {u"Item-spots"_s, spots, [=] {
               QStringList names;
               for (const QVariant& spot : spots)
                 names += nameOf(spot, catalogue.itemSpots);
               return names.isEmpty() ? u"geen"_s : names.join(u", "_s);
             }};
  return values;
}

void frmItemsDetail::EmptyFields() {
  ui_->txtNaam->clear();
  ui_->lstOpt1ItemSpots->Clear();
  EmptyPattern();
  ui_->ledMix->SetValue(0);
  storedMix_ = shownMix_ = 0;
  ui_->opt1Spot->setChecked(true);
  ui_->txtAantalSpots->clear();
  ui_->txtMaxAantalSpots->clear();
  ui_->chkRandomizeMeerdereSpots->setChecked(false);
  for (QCheckBox* jingle : {ui_->chkOpenerPingle, ui_->chkMiddenPingle, ui_->chkSluiterPingle})
    jingle->setChecked(false);
}

void frmItemsDetail::RequireStillThere() const {
  if (!isNew_ && ReadItem().Eof()) {
    throw runtime::Error(u"Dit item is intussen door iemand anders verwijderd. Er is niets bewaard."_s);
  }
}

ItemRow frmItemsDetail::ValuesOnScreen(qint32 id) const {
  ItemRow row;
  row.id = id;
  row.naam = runtime::TrimBlanks(ui_->txtNaam->text());
  row.aktief = ui_->chkAktief->isChecked() ? 1 : 0;
  row.locked = locked_;
  row.itemSpotsOptID = ui_->opt2->isChecked() ? 2 : ui_->opt1->isChecked() ? 1 : 0;
  if (row.itemSpotsOptID == 2) ReadPattern(row);
  if (ui_->optMeerdereSpots->isChecked()) {
    row.optMeerdereSpots = -1;
    row.aantalSpots = runtime::ToLong(ui_->txtAantalSpots->text());
    row.maxAantalSpots = runtime::ToLong(ui_->txtMaxAantalSpots->text());
    row.chkRandomizeMeerdereSpots = ui_->chkRandomizeMeerdereSpots->isChecked() ? 1 : 0;
  }
  row.opener = Chosen(*ui_->cboOpenerPingle);
  row.midden = Chosen(*ui_->cboMiddenPingle);
  row.sluiter = Chosen(*ui_->cboSluiterPingle);
  return row;
}

std::optional<qint32> frmItemsDetail::Chosen(const controls::ComboBox& combo) {
  if (combo.ListIndex() == -1) return std::nullopt;
  return static_cast<qint32>(combo.ItemData(combo.ListIndex()));
}

void frmItemsDetail::ReadPattern(ItemRow& row) const {
  row.opt2Directory = runtime::TrimBlanks(ui_->txtOpt2Directory->text());
  row.opt2VastNaamGedeelte = runtime::TrimBlanks(ui_->txtOpt2VastNaamGedeelte->text());
  row.opt2VariabelNaamGedeelte = Chosen(*ui_->cboOpt2VariabelNaamGedeelte).value_or(0);
  row.opt2FormatGedeelte = runtime::TrimBlanks(ui_->cboOpt2VariabelNaamGedeelte->currentText());
  row.opt2Eerstedagvanweek = Chosen(*ui_->cboOpt2Eerstedagvanweek).value_or(0);
  row.opt2FileExtensie = runtime::TrimBlanks(ui_->txtOpt2FileExtensie->text());
  // A stored value outside the panel's range is kept unless the user changed it.
  row.opt2MixPunt = ui_->ledMix->Value() == shownMix_ ? storedMix_ : ui_->ledMix->Value();
}

bool frmItemsDetail::WriteLinks(const Catalogue& catalogue) const {
  const QString& link = catalogue.itemsItemSpots;
  global.lastResult = Delete_tblBeheer(id_, link, link + u".ItemID", catalogue.databasePath);
  if (!global.lastResult || !ui_->opt1->isChecked()) return global.lastResult;
  for (int line = 0; line < ui_->lstOpt1ItemSpots->ListCount(); ++line) {
    const auto spot = static_cast<qint32>(ui_->lstOpt1ItemSpots->ItemData(line));
    global.lastResult = Insert_tblItemsItemSpots({id_, line + 1, spot}, catalogue.databasePath, link);
    if (!global.lastResult) return false;
  }
  return true;
}

FileNamePattern frmItemsDetail::PatternOnScreen() const {
  FileNamePattern pattern;
  pattern.directory = ui_->txtOpt2Directory->text();
  pattern.fixedPart = ui_->txtOpt2VastNaamGedeelte->text();
  pattern.variableCode = Chosen(*ui_->cboOpt2VariabelNaamGedeelte).value_or(0);
  pattern.format = runtime::TrimBlanks(ui_->cboOpt2VariabelNaamGedeelte->currentText());
  pattern.firstDayOfWeek = Chosen(*ui_->cboOpt2Eerstedagvanweek).value_or(0);
  pattern.extension = ui_->txtOpt2FileExtensie->text();
  pattern.severalSpots = ui_->optMeerdereSpots->isChecked();
  return pattern;
}

Block frmItemsDetail::BlockOnScreen() const {
  const BlockParts parts(CurrentCatalogue());
  Block block;
  block.id = id_;
  block.naam = runtime::TrimBlanks(ui_->txtNaam->text());
  block.aktief = ui_->chkAktief->isChecked();
  block.filling = ui_->opt1->isChecked()   ? Block::Filling::List
                  : ui_->opt2->isChecked() ? Block::Filling::Files
                                           : Block::Filling::Unknown;
  for (int line = 0; line < ui_->lstOpt1ItemSpots->ListCount(); ++line) {
    if (const BlockSpot* spot = parts.Spot(static_cast<qint32>(ui_->lstOpt1ItemSpots->ItemData(line))))
      block.spots.push_back(*spot);
  }
  block.pattern = PatternOnScreen();
  block.patternMixMs = ui_->ledMix->Value() == shownMix_ ? storedMix_ : ui_->ledMix->Value();
  block.several = ui_->optMeerdereSpots->isChecked();
  block.count = NumberIn(*ui_->txtAantalSpots);
  block.most = NumberIn(*ui_->txtMaxAantalSpots);
  block.random = ui_->chkRandomizeMeerdereSpots->isChecked();
  block.opener = parts.Jingle(Chosen(*ui_->cboOpenerPingle).value_or(0));
  block.middle = parts.Jingle(Chosen(*ui_->cboMiddenPingle).value_or(0));
  block.closer = parts.Jingle(Chosen(*ui_->cboSluiterPingle).value_or(0));
  return block;
}
