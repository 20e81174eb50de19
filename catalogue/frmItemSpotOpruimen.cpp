// SPDX-License-Identifier: MIT
#include "catalogue/frmItemSpotOpruimen.h"

#include "data/Lookups.h"
#include "data/Usage.h"
#include "platform/dao/Database.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/TextFile.h"
#include "ui_frmItemSpotOpruimen.h"

using namespace Qt::StringLiterals;

frmItemSpotOpruimen::frmItemSpotOpruimen(QWidget* owner)
    : CleanupForm(owner), ui_(std::make_unique<Ui::frmItemSpotOpruimen>()) {
  ui_->setupUi(this);
  Wire({ui_->txtOpruimenVan, ui_->chkVerwijderBestand, ui_->chkVerwijderID, ui_->cmdOk, ui_->cmdSluiten,
        ui_->lblGebruik});
}

frmItemSpotOpruimen::~frmItemSpotOpruimen() = default;

QString frmItemSpotOpruimen::NameOf(qint32 id, const Catalogue& catalogue) const {
  return GetItemSpotID_Naam(id, catalogue.databasePath, catalogue.itemSpots);
}

QString frmItemSpotOpruimen::UsageOf(qint32 id, const Catalogue& catalogue) const {
  return UsageText(ItemsWithSpot(id, catalogue)) + u'.';
}

void frmItemSpotOpruimen::CleanUp(const Catalogue& catalogue) {
  const QString& table = catalogue.itemSpots;
  dao::Database database = dao::OpenDatabase(catalogue.databasePath);
  dao::Recordset rows = database.OpenRecordset(SelectByID(table + u".ID, "_s + table + u".Path"_s, table));
  if (rows.Bof() && rows.Eof()) return;
  for (rows.MoveFirst(); !rows.Eof(); rows.MoveNext()) {
    const qint32 id = runtime::ToLong(rows.Field(u"ID"_s));
    const QString path = runtime::TrimBlanks(rows.Field(u"Path"_s).toString());
    if (DeletesRecord()) DeleteRecords(id, table, table + u".ID"_s, catalogue.databasePath);
    if (DeletesFiles()) runtime::DeleteFile(path);
  }
}
