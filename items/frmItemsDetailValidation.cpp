// SPDX-License-Identifier: MIT
// The checks before saving an item.
#include "data/Text.h"
#include "items/frmItemsDetail.h"
#include "items/ui_frmItemsDetail.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Trapped.h"

using namespace Qt::StringLiterals;
using runtime::Trapped;

namespace {

constexpr int kLongestName = 50;
constexpr int kLongestDirectory = 240;
constexpr int kLongestExtension = 3;

}  // namespace

bool frmItemsDetail::OpslaanProceed() {
  return Trapped(__func__, false, [this] {
    const QString naam = ui_->txtNaam->text();
    if (!FilledWithin(naam, u"Item-naam"_s, kLongestName, ui_->txtNaam)) return false;
    if (IsDuplicateCode()) return Refuse(1600, runtime::TrimBlanks(naam), u"Item-naam"_s, ui_->txtNaam);
    if (ui_->opt1->isChecked() && ui_->lstOpt1ItemSpots->ListCount() == 0) return Refuse(5005, {}, {}, nullptr);
    if (ui_->opt2->isChecked() && !PatternProceed()) return false;
    return !ui_->optMeerdereSpots->isChecked() || SeveralSpotsProceed();
  });
}

bool frmItemsDetail::FilledWithin(const QString& text, const QString& label, int longest, QWidget* focus) {
  if (IsKull(text)) return Refuse(1500, label, {}, focus);
  if (text.size() > longest) return Refuse(1506, label, QString::number(longest), focus);
  return true;
}

bool frmItemsDetail::IsDuplicateCode() {
  return Trapped(__func__, false, [this] {
    const Catalogue catalogue = CurrentCatalogue();
    return NameExists(catalogue.databasePath, catalogue.items, ui_->txtNaam->text(), isNew_, id_);
  });
}

bool frmItemsDetail::PatternProceed() {
  if (!FilledWithin(ui_->txtOpt2Directory->text(), u"Directory"_s, kLongestDirectory, ui_->txtOpt2Directory))
    return false;
  if (!FilledWithin(ui_->txtOpt2VastNaamGedeelte->text(), u"Vast Naam-gedeelte"_s, kLongestName,
                    ui_->txtOpt2VastNaamGedeelte)) {
    return false;
  }
  if (ui_->cboOpt2VariabelNaamGedeelte->ListIndex() == -1) {
    return Refuse(1501, u"Variabel Naam-gedeelte"_s, u"format"_s, ui_->cboOpt2VariabelNaamGedeelte);
  }
  return FilledWithin(ui_->txtOpt2FileExtensie->text(), u"File-extensie"_s, kLongestExtension,
                      ui_->txtOpt2FileExtensie);
}

bool frmItemsDetail::SeveralSpotsProceed() {
  const QString count = ui_->txtAantalSpots->text();
  const QString most = ui_->txtMaxAantalSpots->text();
  if (!runtime::IsNumeric(count)) return Refuse(3028, u"Aantal spots"_s, {}, ui_->txtAantalSpots);
  if (!runtime::IsNumeric(most)) return Refuse(3028, u"Maximum aantal spots"_s, {}, ui_->txtMaxAantalSpots);
  if (runtime::ToLong(count) < 1) return Refuse(5107, u"0"_s, {}, ui_->txtAantalSpots);
  if (runtime::ToLong(count) > runtime::ToLong(most)) return Refuse(5106, {}, {}, ui_->txtAantalSpots);
  return true;
}
