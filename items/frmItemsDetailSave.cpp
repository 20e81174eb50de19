// SPDX-License-Identifier: MIT
// Saving the item.
#include "data/Globals.h"
#include "data/Lookups.h"
#include "data/Writes.h"
#include "items/frmItemsDetail.h"
#include "items/ui_frmItemsDetail.h"
#include "platform/desktop/WaitPointer.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Trapped.h"

#include <optional>

using namespace Qt::StringLiterals;
using runtime::Trapped;

void frmItemsDetail::Opslaan() {
  isDirty_ = true;  // until all steps succeeded
  Trapped(__func__, [this] {
    if (isLocked_) return;
    const Catalogue catalogue = CurrentCatalogue();
    const desktop::WaitPointer wait;
    RequireLoaded();
    RequireStillThere();
    if (isNew_) {
      const auto id = GetNewIDIfAny(catalogue.items, catalogue.items + u".ID", catalogue.databasePath);
      if (!id) return;
      id_ = *id;
    }
    const ItemRow row = ValuesOnScreen();
    global.lastResult = isNew_ ? Insert_tblItems(row, catalogue.databasePath, catalogue.items)
                               : Update_tblItems(row, catalogue.databasePath, catalogue.items);
    if (WasCarriedOut()) isNew_ = false;
    if (!global.lastResult) return;
    if (WriteLinks(catalogue)) isDirty_ = false;
  });
}

void frmItemsDetail::RequireStillThere() const {
  if (!isNew_ && ReadItem().Eof()) {
    throw runtime::Error(u"Dit item is intussen door iemand anders verwijderd. Er is niets bewaard."_s);
  }
}

ItemRow frmItemsDetail::ValuesOnScreen() const {
  ItemRow row;
  row.id = id_;
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
