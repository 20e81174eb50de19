// SPDX-License-Identifier: MIT
// The item editor's change events.
#include "export/playout/FileNameExample.h"
#include "items/frmItemsDetail.h"
#include "items/ui_frmItemsDetail.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Trapped.h"

using runtime::Trapped;

void frmItemsDetail::txtNaam_Change() {
  Trapped(__func__, [this] { Changed(); });
}

void frmItemsDetail::chkAktief_Click() {
  Trapped(__func__, [this] { Changed(); });
}

void frmItemsDetail::cboOpenerPingle_Click() {
  Trapped(__func__, [this] { Changed(); });
}

void frmItemsDetail::cboSluiterPingle_Click() {
  Trapped(__func__, [this] { Changed(); });
}

void frmItemsDetail::opt1_Click() {
  Trapped(__func__, [this] { FillingChanged(); });
}

void frmItemsDetail::opt2_Click() {
  Trapped(__func__, [this] { FillingChanged(); });
}

void frmItemsDetail::FillingChanged() {
  Changed();
  InitControls();
  InitCommands();
}

void frmItemsDetail::txtOpt2Directory_Change() {
  Trapped(__func__, [this] { PatternChanged(); });
}

void frmItemsDetail::txtOpt2VastNaamGedeelte_Change() {
  Trapped(__func__, [this] { PatternChanged(); });
}

void frmItemsDetail::txtOpt2FileExtensie_Change() {
  Trapped(__func__, [this] { PatternChanged(); });
}

void frmItemsDetail::cboOpt2Eerstedagvanweek_Click() {
  Trapped(__func__, [this] { PatternChanged(); });
}

void frmItemsDetail::PatternChanged() {
  Changed();
  ShowOpt2Voorbeeld();
}

void frmItemsDetail::cboOpt2VariabelNaamGedeelte_Click() {
  Trapped(__func__, [this] { NamePartsChanged(); });
}

void frmItemsDetail::opt1Spot_Click() {
  Trapped(__func__, [this] { NamePartsChanged(); });
}

void frmItemsDetail::optMeerdereSpots_Click() {
  Trapped(__func__, [this] { NamePartsChanged(); });
}

// The date part and the number of spots enable other fields and change the example.
void frmItemsDetail::NamePartsChanged() {
  Changed();
  InitControls();
  ShowOpt2Voorbeeld();
}

void frmItemsDetail::chkOpenerPingle_Click() {
  Trapped(__func__, [this] { JinglesChanged(); });
}

void frmItemsDetail::chkMiddenPingle_Click() {
  Trapped(__func__, [this] { JinglesChanged(); });
}

void frmItemsDetail::chkSluiterPingle_Click() {
  Trapped(__func__, [this] { JinglesChanged(); });
}

void frmItemsDetail::JinglesChanged() {
  Changed();
  InitControls();
}

void frmItemsDetail::lstOpt1ItemSpots_Click() {
  InitCommands();
}

void frmItemsDetail::lstOpt1ItemSpots_DblClick() {
  Trapped(__func__, [this] { cmdOpt1Wijzigen_Click(); });
}

void frmItemsDetail::ShowOpt2Voorbeeld() {
  Trapped(__func__, [this] {
    const FileNamePattern pattern = PatternOnScreen();
    ui_->txtOpt2Voorbeeld->setText(FileNameExample(pattern, runtime::Now()));
    example_.Look(pattern, ui_->txtAantalSpots->text().toInt());
  });
}
