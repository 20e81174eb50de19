// SPDX-License-Identifier: MIT
// Which fields of the item editor are enabled, locked or cleared, and which buttons are enabled.
#include "items/frmItemsDetail.h"
#include "items/ui_frmItemsDetail.h"
#include "platform/desktop/Lock.h"
#include "platform/runtime/Trapped.h"

#include <QSignalBlocker>

using namespace Qt::StringLiterals;
using runtime::Trapped;

namespace {

// White and enabled, or grey and disabled.
void Open(QWidget* field, bool open) {
  field->setEnabled(open);
  desktop::SetLocked(field, !open);
}

}  // namespace

void frmItemsDetail::InitControls() {
  Trapped(__func__, [this] {
    InitListOption();
    InitPatternOption();
    LockControl(u"txtOpt2Directory"_s, true);
    InitSpotCount();
    InitJingles();
    ListChanged();
  });
}

void frmItemsDetail::InitListOption() {
  const bool chosen = ui_->opt1->isChecked();
  if (!chosen) {
    KeepList();
    ui_->lstOpt1ItemSpots->Clear();
  }
  Open(ui_->lstOpt1ItemSpots, chosen);
  ui_->lstOpt1ItemSpots->SetEmptyText(chosen ? u"Nog geen item-spots.\nKies ‘Toevoegen’ om te beginnen."_s : QString());
}

void frmItemsDetail::InitPatternOption() {
  const bool chosen = ui_->opt2->isChecked();
  if (!chosen) EmptyPattern();
  ui_->txtOpt2Directory->setEnabled(chosen);
  Open(ui_->txtOpt2VastNaamGedeelte, chosen);
  Open(ui_->cboOpt2VariabelNaamGedeelte, chosen);
  Open(ui_->txtOpt2FileExtensie, chosen);
  ui_->txtOpt2Voorbeeld->setEnabled(chosen);
  desktop::SetLocked(ui_->txtOpt2Voorbeeld, true);  // display only
  InitFirstDay();
  for (QLabel* label : {ui_->lblOpt2Directory, ui_->lblOpt2VastNaamGedeelte, ui_->lblOpt2VariabelNaamGedeelte,
                        ui_->lblOpt2FileExtensie, ui_->lblOpt2Voorbeeld}) {
    label->setEnabled(chosen);
  }
}

void frmItemsDetail::EmptyPattern() {
  ui_->txtOpt2Directory->clear();
  ui_->txtOpt2VastNaamGedeelte->clear();
  ui_->txtOpt2FileExtensie->clear();
  ui_->txtOpt2Voorbeeld->clear();
  example_.Look({}, 0);
  ui_->cboOpt2VariabelNaamGedeelte->SetListIndex(-1);
  ui_->cboOpt2Eerstedagvanweek->SetListIndex(-1);
}

bool frmItemsDetail::IsWeekChosen() const {
  constexpr int kWeek = 2;  // the third entry
  return ui_->cboOpt2VariabelNaamGedeelte->ListIndex() == kWeek;
}

void frmItemsDetail::InitFirstDay() {
  const bool used = ui_->opt2->isChecked() && IsWeekChosen();
  if (!used) ui_->cboOpt2Eerstedagvanweek->SetListIndex(-1);
  Open(ui_->cboOpt2Eerstedagvanweek, used);
  ui_->lblOpt2Eerstedagvanweek->setEnabled(used);
}

void frmItemsDetail::InitSpotCount() {
  const bool several = ui_->optMeerdereSpots->isChecked();
  if (!several) {
    ui_->txtAantalSpots->clear();
    ui_->txtMaxAantalSpots->clear();
    ui_->chkRandomizeMeerdereSpots->setChecked(false);
    ui_->chkMiddenPingle->setChecked(false);
  } else if (ui_->opt1->isChecked()) {
    ui_->txtMaxAantalSpots->setText(QString::number(ui_->lstOpt1ItemSpots->ListCount()));
  }
  desktop::SetLocked(ui_->txtAantalSpots, !several);
  desktop::SetLocked(ui_->txtMaxAantalSpots, !(several && ui_->opt2->isChecked()));
  ui_->chkRandomizeMeerdereSpots->setEnabled(several);
  ui_->chkMiddenPingle->setEnabled(several);
}

void frmItemsDetail::InitJingles() {
  const auto follow = [this](const QCheckBox* check, controls::ComboBox* combo) {
    if (!check->isChecked()) combo->SetListIndex(-1);
    LockControl(combo->objectName(), !check->isChecked());
  };
  follow(ui_->chkOpenerPingle, ui_->cboOpenerPingle);
  follow(ui_->chkMiddenPingle, ui_->cboMiddenPingle);
  follow(ui_->chkSluiterPingle, ui_->cboSluiterPingle);
}

void frmItemsDetail::ListChanged() {
  lengths_.Show(*ui_->lstOpt1ItemSpots);
  ui_->lblOpt1Totaal->setText(ui_->opt2->isChecked() ? u"Geen lijst bij optie 2"_s
                                                     : lengths_.Total(*ui_->lstOpt1ItemSpots));
  ShowUndoList();
}

void frmItemsDetail::InitCommands() {
  Trapped(__func__, [this] {
    const bool list = !isLocked_ && ui_->opt1->isChecked();
    const bool selected = ui_->lstOpt1ItemSpots->ListIndex() != -1;
    ui_->cmdOpt1Toevoegen->setEnabled(list);
    ui_->cmdOpt1Wijzigen->setEnabled(list && selected);
    ui_->cmdOpt1Verwijderen->setEnabled(list && selected);
    ui_->cmdDirectory->setEnabled(!isLocked_ && ui_->opt2->isChecked());
    if (isLocked_) ui_->cmdOk->setEnabled(false);
    ui_->lblVergrendeld->setVisible(isLocked_);
    ui_->lstOpt1ItemSpots->SetMovable(list);
  });
}
