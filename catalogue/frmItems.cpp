#include "catalogue/frmItems.h"

#include "catalogue/LocalCopy.h"
#include "data/Globals.h"
#include "data/Writes.h"
#include "platform/runtime/Trapped.h"
#include "ui_frmItems.h"

using namespace Qt::StringLiterals;
using runtime::Trapped;

frmItems::frmItems(QWidget* owner)
    : OverviewForm(owner, u"item"_s, u"items"_s, Screen::ItemsDetail), ui_(std::make_unique<Ui::frmItems>()) {
  ui_->setupUi(this);
  Wire(*ui_);
}

frmItems::~frmItems() = default;

void frmItems::cmdVerwijder_Click() {
  Trapped(__func__, [&] { OpenCleanup(Screen::ItemOpruimen); });
}

OverviewForm::SetAktief frmItems::Deactivator() const {
  return Update_tblItems_Aktief;
}

void frmItems::Form_Unload() {
  Trapped(__func__, [&] {
    if (!global.online) return;
    RefreshLocalCopies(
        {{u"tblCopie_Items"_s, TransItemsToLocal}, {u"tblCopie_ItemsItemSpots"_s, TransItemsItemSpotsToLocal}});
  });
}
