// SPDX-License-Identifier: MIT
#include "catalogue/frmItemPingles.h"

#include "catalogue/LocalCopy.h"
#include "data/Globals.h"
#include "data/MessageNumbers.h"
#include "data/Messages.h"
#include "data/Usage.h"
#include "data/Writes.h"
#include "platform/desktop/WaitPointer.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Trapped.h"
#include "ui_frmItemPingles.h"

using namespace Qt::StringLiterals;
using runtime::Trapped;

frmItemPingles::frmItemPingles(QWidget* owner)
    : OverviewForm(owner, RecordKind::ItemPingle, u"item-pingle"_s, u"item-pingles"_s, Screen::ItemPinglesDetail),
      ui_(std::make_unique<Ui::frmItemPingles>()),
      usage_(this) {
  ui_->setupUi(this);
  Wire(*ui_);
  AcceptAudio();
}

frmItemPingles::~frmItemPingles() = default;

void frmItemPingles::InitCommands() {
  OverviewForm::InitCommands();
  Trapped(__func__, [&] { ShowUsage(); });
}

// Where the selected jingle is used, read in the background.
void frmItemPingles::ShowUsage() {
  ui_->lblGebruik->setText({});
  usage_.Cancel();
  if (List().ListIndex() == -1) return;
  usage_.Send([this, id = SelectedID(), catalogue = CurrentCatalogue()](const LatestTask::Token& token) {
    QString text;
    try {
      text = UsageText(ItemsWithPingle(id, catalogue));
    } catch (const runtime::Error&) {
      text = u"Waar de jingle gebruikt wordt, is nu niet te lezen."_s;
    }
    token.Post([this, text] { ui_->lblGebruik->setText(text); });
  });
}

void frmItemPingles::cmdVerwijder_Click() {
  Trapped(__func__, [&] {
    const QString name = runtime::TrimBlanks(List().Text(List().ListIndex()));
    const QString question = u'"' + name + u'"' + u" verwijderen uit de lijst ..."_s + u"\r\n"_s;
    if (ShowAppMessage(message::kAreYouSure, question) == kAnswerYes) {
      const desktop::WaitPointer wait;
      const Catalogue catalogue = CurrentCatalogue();
      global.lastResult = Delete_tblBeheer(SelectedID(), catalogue.itemPingles, catalogue.itemPingles + u".ID"_s,
                                           catalogue.databasePath);
    }
    Refill();
  });
}

void frmItemPingles::Form_Unload() {
  Trapped(__func__, [&] {
    if (global.online) RefreshLocalCopies({{u"tblCopie_ItemPingles"_s, TransItemPinglesToLocal}});
  });
}
