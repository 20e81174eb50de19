// SPDX-License-Identifier: MIT
#include "media/frmItemPinglesDetail.h"

#include "data/Catalogue.h"
#include "data/Usage.h"
#include "data/Writes.h"
#include "media/ControlsOf.h"
#include "ui_frmItemPinglesDetail.h"

using namespace Qt::StringLiterals;

frmItemPinglesDetail::frmItemPinglesDetail(QWidget* owner)
    : AudioEditor({u"Item-pingle"_s, u"Reclame-pingle kiezen"_s}, owner),
      ui_(std::make_unique<Ui::frmItemPinglesDetail>()) {
  ui_->setupUi(this);
  constexpr QSize kOpeningSize(920, 560);
  Wire(ControlsOf(*ui_), kOpeningSize);
}

frmItemPinglesDetail::~frmItemPinglesDetail() = default;

QString frmItemPinglesDetail::TableName() const {
  return CurrentCatalogue().itemPingles;
}

void frmItemPinglesDetail::FillRecord(const dao::Recordset& row) {
  FillPath(row);
  FillNaam(row);
  FillLengteSec(row);
  FillMixPunt(row);
  FillAktief(row);
}

QStringList frmItemPinglesDetail::ItemsUsing(qint32 id) const {
  return ItemsWithPingle(id);
}

bool frmItemPinglesDetail::Write(qint32 id, const QString& databasePath, const QString& table) {
  ItemPingleRow row;
  row.id = id;
  row.path = PathToSave();
  row.naam = NaamToSave();
  row.lengteSec = LengteSecToSave();
  row.startPunt = 0;
  row.mixPunt = MixPuntToSave();
  row.aktief = AktiefToSave();
  return isNew_ ? Insert_tblItemPingles(row, databasePath, table) : Update_tblItemPingles(row, databasePath, table);
}
