// SPDX-License-Identifier: MIT
// What cancelling would lose without a question: values that do not make the form dirty, and the list of option 1 that
// a change of option empties.
#include "items/frmItemsDetail.h"
#include "items/ui_frmItemsDetail.h"
#include "platform/runtime/Trapped.h"

#include <QShortcut>

#include <utility>

using namespace Qt::StringLiterals;
using runtime::Trapped;

void frmItemsDetail::ConnectUnsaved() {
  for (const QLineEdit* number : {ui_->txtAantalSpots, ui_->txtMaxAantalSpots})
    connect(number, &QLineEdit::textChanged, this, &frmItemsDetail::ShowUnsaved);
  for (const QAbstractButton* choice :
       std::initializer_list<const QAbstractButton*>{ui_->optMeerdereSpots, ui_->chkRandomizeMeerdereSpots})
    connect(choice, &QAbstractButton::toggled, this, &frmItemsDetail::ShowUnsaved);
  connect(ui_->cboMiddenPingle, &QComboBox::currentIndexChanged, this, &frmItemsDetail::ShowUnsaved);
  connect(ui_->ledMix, &controls::LedPanel::valueChanged, this, &frmItemsDetail::ShowUnsaved);
  connect(ui_->cmdOpt1Ongedaan, &QPushButton::clicked, this, &frmItemsDetail::cmdOpt1Ongedaan_Click);
  const auto* undo = new QShortcut(QKeySequence::Undo, this);
  connect(undo, &QShortcut::activated, ui_->cmdOpt1Ongedaan, &QPushButton::click);
  ShowUndoList();
}

frmItemsDetail::Untracked frmItemsDetail::UntrackedOnScreen() const {
  return {ui_->txtAantalSpots->text(), ui_->txtMaxAantalSpots->text(), ui_->chkRandomizeMeerdereSpots->isChecked(),
          Chosen(*ui_->cboMiddenPingle), ui_->ledMix->Value()};
}

// Called when the fields show what is stored.
void frmItemsDetail::KeepUntracked() {
  untracked_ = UntrackedOnScreen();
  emptied_.clear();
  ShowUnsaved();
  ShowUndoList();
}

// An item of one spot does not use these fields, and the choice between one and several is tracked. The maximum of
// option 1 is the length of its list, which is tracked too.
void frmItemsDetail::ShowUnsaved() {
  const Untracked now = UntrackedOnScreen();
  const bool several = ui_->optMeerdereSpots->isChecked();
  ui_->lblOpenAantalSpots->setVisible(several && now.aantalSpots != untracked_.aantalSpots);
  ui_->lblOpenMaxAantalSpots->setVisible(several && ui_->opt2->isChecked() &&
                                         now.maxAantalSpots != untracked_.maxAantalSpots);
  ui_->lblOpenRandomize->setVisible(several && now.random != untracked_.random);
  ui_->lblOpenMidden->setVisible(several && now.midden != untracked_.midden);
  ui_->lblMs->setText(now.mix == untracked_.mix ? tr("ms") : tr("ms, nog niet bewaard"));
}

// Called before the list is emptied because the other option was chosen.
void frmItemsDetail::KeepList() {
  if (ui_->lstOpt1ItemSpots->ListCount() == 0) return;
  emptied_.clear();
  for (int line = 0; line < ui_->lstOpt1ItemSpots->ListCount(); ++line)
    emptied_.push_back({ui_->lstOpt1ItemSpots->Text(line), ui_->lstOpt1ItemSpots->ItemData(line)});
}

// Offered while the list is still empty.
void frmItemsDetail::ShowUndoList() {
  const bool offered =
      !emptied_.empty() && ui_->opt1->isChecked() && ui_->lstOpt1ItemSpots->ListCount() == 0 && !isLocked_;
  ui_->cmdOpt1Ongedaan->setVisible(offered);
  if (!offered) return;
  ui_->lstOpt1ItemSpots->SetEmptyText(
      emptied_.size() == 1 ? tr("De item-spot is uit de lijst gehaald.\n‘Ongedaan maken’ (Ctrl+Z) haalt hem terug.")
                           : tr("%1 item-spots zijn uit de lijst gehaald.\n‘Ongedaan maken’ (Ctrl+Z) haalt ze terug.")
                                 .arg(emptied_.size()));
}

void frmItemsDetail::cmdOpt1Ongedaan_Click() {
  Trapped(__func__, [this] {
    if (ui_->cmdOpt1Ongedaan->isHidden()) return;
    ui_->lstOpt1ItemSpots->AddItems(std::exchange(emptied_, {}));
    InitControls();
    InitCommands();
    Changed();
    ui_->lstOpt1ItemSpots->setFocus();
  });
}
