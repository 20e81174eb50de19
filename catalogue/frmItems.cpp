#include "catalogue/frmItems.h"

#include "catalogue/LocalCopy.h"
#include "data/Globals.h"
#include "data/Writes.h"
#include "platform/desktop/Trapped.h"
#include "ui_frmItems.h"

using namespace Qt::StringLiterals;
using desktop::Trapped;

frmItems::frmItems(QWidget* owner)
    : OverviewForm(owner, u"item"_s, u"items"_s, Screen::ItemsDetail), ui_(std::make_unique<Ui::frmItems>()) {
  ui_->setupUi(this);
  Controls controls;
  controls.lstOverzicht = ui_->lstOverzicht;
  controls.txtZoek = ui_->txtZoek;
  controls.lblAantal = ui_->lblAantal;
  controls.cmdNieuw = ui_->cmdNieuw;
  controls.cmdOpen = ui_->cmdOpen;
  controls.cmdDesaktiveer = ui_->cmdDesaktiveer;
  controls.cmdVerwijder = ui_->cmdVerwijder;
  controls.cmdSluiten = ui_->cmdSluiten;
  controls.chkAktieve = ui_->chkAktieve;
  controls.chkNietAktieve = ui_->chkNietAktieve;
  Wire(controls);
  connect(ui_->cmdDesaktiveer, &QPushButton::clicked, this, &frmItems::cmdDesaktiveer_Click);
}

frmItems::~frmItems() = default;

void frmItems::cmdVerwijder_Click() {
  Trapped(__func__, [&] { OpenCleanup(Screen::ItemOpruimen); });
}

void frmItems::cmdDesaktiveer_Click() {
  Trapped(__func__, [&] { Deactivate(Update_tblItems_Aktief); });
}

void frmItems::Form_Unload() {
  Trapped(__func__, [&] {
    if (!global.online) return;
    RefreshLocalCopies(
        {{u"tblCopie_Items"_s, TransItemsToLocal}, {u"tblCopie_ItemsItemSpots"_s, TransItemsItemSpotsToLocal}});
  });
}
