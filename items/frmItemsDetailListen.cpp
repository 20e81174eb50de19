// SPDX-License-Identifier: MIT
// Listening to the block with the item editor's unsaved values.
#include "data/Catalogue.h"
#include "data/forms/Screens.h"
#include "export/playout/BlockReader.h"
#include "export/playout/BlockToHear.h"
#include "items/frmItemsDetail.h"
#include "items/ui_frmItemsDetail.h"
#include "platform/desktop/WaitPointer.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Trapped.h"

using runtime::Trapped;

namespace {

// The number may be incomplete input.
qint32 NumberIn(const QLineEdit& field) {
  bool whole = false;
  const qint32 number = field.text().trimmed().toInt(&whole);
  return whole ? number : 0;
}

}  // namespace

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

void frmItemsDetail::cmdBeluisteren_Click() {
  Trapped(__func__, [this] {
    {
      const desktop::WaitPointer wait;
      SetBlockToHear(BlockOnScreen());
    }
    ShowScreen(Screen::Beluisteren, this);
  });
}
