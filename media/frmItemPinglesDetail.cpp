// SPDX-License-Identifier: MIT
#include "media/frmItemPinglesDetail.h"

#include "data/Catalogue.h"
#include "data/Usage.h"
#include "data/Writes.h"
#include "media/AudioPreview.h"
#include "media/ControlsOf.h"
#include "platform/runtime/Trapped.h"
#include "ui_frmItemPinglesDetail.h"

using namespace Qt::StringLiterals;
using runtime::Trapped;

frmItemPinglesDetail::frmItemPinglesDetail(QWidget* owner)
    : EditorForm(owner),
      ui_(std::make_unique<Ui::frmItemPinglesDetail>()),
      fields_({u"Item-pingle"_s, u"Reclame-pingle kiezen"_s, &Catalogue::itemPingles, ItemsWithPingle}, *this) {
  ui_->setupUi(this);
  constexpr QSize kOpeningSize(920, 560);
  fields_.Wire(ControlsOf(*ui_), kOpeningSize);
  connect(&fields_, &AudioFields::changed, this, &frmItemPinglesDetail::Changed);
  connect(ui_->cmdOk, &QPushButton::clicked, this, &frmItemPinglesDetail::cmdOk_Click);
  connect(ui_->cmdAnnuleren, &QPushButton::clicked, this, &frmItemPinglesDetail::cmdAnnuleren_Click);
}

frmItemPinglesDetail::~frmItemPinglesDetail() = default;

void frmItemPinglesDetail::InitForm() {
  Trapped(__func__, [&] { setWindowTitle(fields_.Caption()); });
}

void frmItemPinglesDetail::FillForm() {
  Trapped(__func__, [&] {
    if (isNew_) fields_.FillNew();
    const dao::Recordset row = fields_.ReadRecord();
    if (!row.Eof()) FillRecord(row);
    MarkLoaded();
  });
}

// The order decides what is shown when a field cannot be read.
void frmItemPinglesDetail::FillRecord(const dao::Recordset& row) {
  fields_.FillPath(row);
  fields_.FillNaam(row);
  fields_.FillLengteSec(row);
  fields_.FillMixPunt(row);
  fields_.FillAktief(row);
}

void frmItemPinglesDetail::InitControls() {
  Trapped(__func__, [&] {
    for (const QString& field : {u"txtPath"_s, u"txtLengteSec"_s})
      LockControl(field, true);
  });
}

bool frmItemPinglesDetail::OpslaanProceed() {
  return Trapped(__func__, false, [&] { return Accept(fields_.Check()); });
}

StoredValues frmItemPinglesDetail::ReadStoredValues() const {
  return ValuesOf(fields_.ReadRecord(),
                  {u"Path"_s, u"Naam"_s, u"LengteSec"_s, u"StartPunt"_s, u"Mixpunt"_s, u"Aktief"_s});
}

// Dirty until every step succeeded: after a failure the form stays open with the user's input.
void frmItemPinglesDetail::Opslaan() {
  Trapped(__func__, [&] {
    isDirty_ = true;
    const auto succeeded = fields_.Write([this](qint32 id, const QString& databasePath, const QString& table) {
      return (isNew_ ? Insert_tblItemPingles : Update_tblItemPingles)(RowToSave(id), databasePath, table);
    });
    if (succeeded) isDirty_ = !*succeeded;
  });
}

ItemPingleRow frmItemPinglesDetail::RowToSave(qint32 id) const {
  ItemPingleRow row;
  row.id = id;
  row.path = fields_.PathToSave();
  row.naam = fields_.NaamToSave();
  row.lengteSec = fields_.LengteSecToSave();
  row.startPunt = 0;
  row.mixPunt = fields_.MixPuntToSave();
  row.aktief = fields_.AktiefToSave();
  return row;
}

void frmItemPinglesDetail::cmdOk_Click() {
  Trapped(__func__, [&] { SaveAndClose(); });
}

void frmItemPinglesDetail::cmdAnnuleren_Click() {
  Trapped(__func__, [&] { CancelAndClose(); });
}

void frmItemPinglesDetail::Form_Unload() {
  ui_->preview->Close();
}
