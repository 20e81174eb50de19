// SPDX-License-Identifier: MIT
// Opening the item editor: fixed lists and the fields of the record.
#include "data/Lookups.h"
#include "items/frmItemsDetail.h"
#include "items/ui_frmItemsDetail.h"
#include "platform/dao/Database.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Trapped.h"

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

}  // namespace

void frmItemsDetail::InitForm() {
  Trapped(__func__, [this] {
    setWindowTitle(isNew_ ? u"Item ... nieuw"_s : u"Item ... detail"_s);
    lengths_.Read();
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
        u"Dit item wordt gevuld op een wijze die hier niet bestaat (ItemSpotsOptID = %1)."_s.arg(option));
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
    for (; !rows.Eof(); rows.MoveNext()) {
      const QVariant spot = rows.Field(u"ItemSpotID"_s);
      const qint32 spotID = runtime::IsNumeric(spot) ? runtime::ToLong(spot) : kNoSpot;
      const QString naam = GetItemSpotID_Naam(spotID, catalogue.databasePath, catalogue.itemSpots);
      if (naam.isNull()) return false;
      if (!naam.isEmpty() && spotID != kNoSpot) ui_->lstOpt1ItemSpots->AddItem(naam, spotID);
    }
    return true;
  });
}
