// SPDX-License-Identifier: MIT
#include "catalogue/frmItemOpruimen.h"

#include "catalogue/LocalCopy.h"
#include "data/Backup.h"
#include "data/Globals.h"
#include "data/Lookups.h"
#include "data/Usage.h"
#include "data/Writes.h"
#include "platform/dao/Database.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/TextFile.h"
#include "platform/runtime/Trapped.h"
#include "ui_frmItemOpruimen.h"

#include <optional>

using namespace Qt::StringLiterals;
using runtime::Trapped;

frmItemOpruimen::frmItemOpruimen(QWidget* owner) : CleanupForm(owner), ui_(std::make_unique<Ui::frmItemOpruimen>()) {
  ui_->setupUi(this);
  Wire({ui_->txtOpruimenVan, ui_->chkVerwijderBestand, ui_->chkVerwijderID, ui_->cmdOk, ui_->cmdSluiten,
        ui_->lblGebruik});
  connect(ui_->chkVerwijderSpots, &QCheckBox::toggled, this, &frmItemOpruimen::chkVerwijderSpots_Click);
}

frmItemOpruimen::~frmItemOpruimen() = default;

QString frmItemOpruimen::NameOf(qint32 id, const Catalogue& catalogue) const {
  return GetItemNaam(id, catalogue.databasePath, catalogue.items);
}

QString frmItemOpruimen::UsageOf(qint32 id, const Catalogue& catalogue) const {
  const QStringList shared = SpotsInOtherItems(id, catalogue);
  if (shared.isEmpty()) return u"Geen van de item-spots staat ook in een ander item."_s;
  return u"Ook in andere items: %1."_s.arg(shared.join(u", "_s));
}

void frmItemOpruimen::InitControls() {
  CleanupForm::InitControls();
  Trapped(__func__, [&] {
    // Files are deleted only together with their spots.
    const bool spots = ui_->chkVerwijderSpots->isChecked();
    if (!spots) ui_->chkVerwijderBestand->setChecked(false);
    ui_->chkVerwijderBestand->setEnabled(spots);
  });
}

void frmItemOpruimen::chkVerwijderSpots_Click() {
  Trapped(__func__, [&] { InitControls(); });
}

void frmItemOpruimen::CleanUp(const Catalogue& catalogue) {
  if (RecordsToDelete(catalogue) > 1 && !BackUpBefore(catalogue.databasePath).proceed) return CancelCleanup();
  dao::Database database = dao::OpenDatabase(catalogue.databasePath);
  dao::Recordset rows = database.OpenRecordset(SelectByID(catalogue.items + u".ID"_s, catalogue.items));
  if (rows.Bof() && rows.Eof()) return;
  for (rows.MoveFirst(); !rows.Eof(); rows.MoveNext()) {
    const qint32 itemID = runtime::ToLong(rows.Field(u"ID"_s));
    if (ui_->chkVerwijderSpots->isChecked() || DeletesFiles()) CleanUpSpots(itemID, catalogue);
    if (DeletesRecord()) CleanUpItem(itemID, catalogue);
  }
}

// An upper bound: a spot in several entries counts for each.
int frmItemOpruimen::RecordsToDelete(const Catalogue& catalogue) const {
  if (!runtime::IsNumeric(global.gstrOpruimenID)) return 0;
  const QString id = QString::number(runtime::ToLong(global.gstrOpruimenID));
  dao::Database database = dao::OpenDatabase(catalogue.databasePath);
  const dao::Recordset links = database.OpenRecordset(u"SELECT COUNT(*) AS Aantal FROM "_s + catalogue.itemsItemSpots +
                                                      u" WHERE ItemID = "_s + id);
  const int spots = links.Field(u"Aantal"_s).toInt();
  return (ui_->chkVerwijderSpots->isChecked() ? spots : 0) + (DeletesRecord() ? spots + 1 : 0);
}

void frmItemOpruimen::CleanUpSpots(qint32 itemID, const Catalogue& catalogue) {
  std::optional<dao::Recordset> spots =
      GetItem_ItemSpots(itemID, catalogue.databasePath, catalogue.items, catalogue.itemsItemSpots, catalogue.itemSpots);
  if (!spots) throw runtime::Error(u"De item-spots van dit item konden niet gelezen worden; er is niets verwijderd."_s);
  for (; !spots->Eof(); spots->MoveNext()) {
    const qint32 id = runtime::ToLong(spots->Field(u"ID"_s));
    const QString path = runtime::TrimBlanks(spots->Field(u"Path"_s).toString());
    if (ui_->chkVerwijderSpots->isChecked()) {
      DeleteRecords(id, catalogue.itemSpots, catalogue.itemSpots + u".ID"_s, catalogue.databasePath);
    }
    if (DeletesFiles()) runtime::DeleteFile(path);
  }
}

void frmItemOpruimen::CleanUpItem(qint32 itemID, const Catalogue& catalogue) {
  DeleteRecords(itemID, catalogue.itemsItemSpots, catalogue.itemsItemSpots + u".ItemID"_s, catalogue.databasePath);
  DeleteRecords(itemID, catalogue.items, catalogue.items + u".ID"_s, catalogue.databasePath);
}

void frmItemOpruimen::Form_Unload() {
  // Required: both online and offline.
  Trapped(__func__, [&] { RefreshLocalCopies({{u"tblCopie_ItemSpots"_s, TransItemSpotsToLocal}}); });
}
