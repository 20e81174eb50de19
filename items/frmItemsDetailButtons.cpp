// SPDX-License-Identifier: MIT
// The item editor's buttons except OK and cancel.
#include "data/Globals.h"
#include "data/Messages.h"
#include "data/Writes.h"
#include "data/forms/Screens.h"
#include "items/frmDirectory.h"
#include "items/frmItemsDetail.h"
#include "items/frmItemsDetailOpt1.h"
#include "items/ui_frmItemsDetail.h"
#include "platform/desktop/FocusFallback.h"
#include "platform/desktop/InputBox.h"
#include "platform/desktop/WaitPointer.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Trapped.h"

using namespace Qt::StringLiterals;
using runtime::Trapped;

namespace {

// The message after the play counts of an item's spots were reset. `failed`: number of failures.
QString ResetText(int spots, int failed) {
  if (failed == 0) {
    return u"Het 'Aantal gedraaid' van de item-spots verbonden met dit item werden op nul gezet,\r\n"
           u"zodat elke item-spot voortaan gelijkwaardig behandeld wordt."_s;
  }
  return u"Het 'Aantal gedraaid' van %1 van de %2 item-spots verbonden met dit item werd op nul gezet.\r\n"
         u"Bij %3 item-spot%4 is dat niet gelukt."_s.arg(QString::number(spots - failed), QString::number(spots),
                                                         QString::number(failed), failed == 1 ? u""_s : u"s"_s);
}

}  // namespace

void frmItemsDetail::cmdOpt1Toevoegen_Click() {
  Trapped(__func__, [this] {
    const desktop::WaitPointer wait;
    global.gstrSelectedID = QString::fromUtf16(kNewRecord);
    frmItemsDetailOpt1(this, *ui_->lstOpt1ItemSpots).ShowModal();
    lengths_.Read();
    InitControls();
    InitCommands();
    Changed();
  });
}

void frmItemsDetail::cmdOpt1Wijzigen_Click() {
  Trapped(__func__, [this] {
    if (isLocked_) return;
    const desktop::FocusFallback list(*ui_->lstOpt1ItemSpots);
    const desktop::WaitPointer wait;
    global.gstrSelectedID = QString::number(ui_->lstOpt1ItemSpots->ItemData(ui_->lstOpt1ItemSpots->ListIndex()));
    frmItemsDetailOpt1(this, *ui_->lstOpt1ItemSpots).ShowModal();
    InitCommands();
    Changed();
  });
}

void frmItemsDetail::cmdOpt1Verwijderen_Click() {
  Trapped(__func__, [this] {
    const desktop::FocusFallback list(*ui_->lstOpt1ItemSpots);
    const int line = ui_->lstOpt1ItemSpots->ListIndex();
    if (line != -1) {
      ui_->lstOpt1ItemSpots->RemoveItem(line);
      Changed();
    }
    InitControls();
    InitCommands();
  });
}

void frmItemsDetail::cmdNormalizeItem_Click() {
  Trapped(__func__, [this] {
    const Catalogue catalogue = CurrentCatalogue();
    const int spots = ui_->lstOpt1ItemSpots->ListCount();
    int failed = 0;
    {
      const desktop::WaitPointer wait;
      for (int line = 0; line < spots; ++line) {
        const auto spot = static_cast<qint32>(ui_->lstOpt1ItemSpots->ItemData(line));
        global.lastResult = Reset_tblItemSpots_AantalGedraaid(spot, catalogue.databasePath, catalogue.itemSpots);
        if (!global.lastResult) ++failed;
      }
    }
    ShowItemsMessage(ResetText(spots, failed), 64);
  });
}

void frmItemsDetail::cmdDirectory_Click() {
  Trapped(__func__, [this] {
    global.gstrSelectedID = QString();
    frmDirectory(this).ShowModal();
    if (global.gstrSelectedID.isEmpty()) return;
    ui_->txtOpt2Directory->setText(global.gstrSelectedID);
    txtOpt2Directory_Change();  // also if the same folder was chosen again
  });
}

void frmItemsDetail::ledMix_Click() {
  Trapped(__func__, [this] {
    const auto answer =
        desktop::AskText(this, u"Geef een numerische waarde ..."_s, u"Items"_s, QString::number(ui_->ledMix->Value()));
    global.lastAnswer = answer.value_or(QString());
    if (!answer || !runtime::IsNumeric(*answer)) return;
    ui_->ledMix->SetValue(runtime::ToLong(*answer));
    storedMix_ = shownMix_ = ui_->ledMix->Value();  // entered by the user, even if the panel already showed it
  });
}

void frmItemsDetail::cmdShowItemSpots_Click() {
  Trapped(__func__, [this] { ShowScreen(Screen::ItemSpots, this); });
}

void frmItemsDetail::cmdShowItemPingles_Click() {
  Trapped(__func__, [this] {
    ShowScreen(Screen::ItemPingles, this);
    FillCboPingles();
  });
}
