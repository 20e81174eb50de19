// SPDX-License-Identifier: MIT
#include "media/frmItemSpotsDetail.h"

#include "data/AudioRules.h"
#include "data/Catalogue.h"
#include "data/Usage.h"
#include "data/Writes.h"
#include "export/playout/BlockPlan.h"
#include "export/playout/BlockReader.h"
#include "media/AudioPreview.h"
#include "media/ControlsOf.h"
#include "media/ValidityRemark.h"
#include "platform/audio/AudioPlayer.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/Dates.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Trapped.h"
#include "ui_frmItemSpotsDetail.h"

#include <QTimer>

#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;
using runtime::Trapped;

namespace {

// With the time of day, unless it is midnight.
QString MomentText(const QVariant& value) {
  const QDateTime moment = value.toDateTime();
  const bool midnight = moment.time() == QTime(0, 0);
  return runtime::FormatDate(moment, midnight ? u"dd-mm-yyyy"_s : u"dd-mm-yyyy hh:nn:ss"_s);
}

void FillDate(controls::DateCombo* field, const QVariant& date) {
  if (!date.isNull()) field->SetText(runtime::DateText(date.toDate()));
}

void FillNumber(QLineEdit* field, const QVariant& number) {
  if (runtime::IsNumeric(number)) field->setText(QString::number(runtime::ToLong(number)));
}

qint32 DayToSave(const controls::DateCombo* field) {
  if (field->HoldsDate()) return runtime::DayNumber(*field->Date());
  return runtime::IsNumeric(field->Text()) ? runtime::ToLong(field->Text()) : 0;
}

qint32 HourToSave(const QLineEdit* field, qint32 otherwise) {
  return runtime::IsNumeric(field->text()) ? runtime::ToLong(field->text()) : otherwise;
}

std::optional<int> HourOf(const QLineEdit* field) {
  if (!runtime::IsNumeric(field->text())) return std::nullopt;
  return static_cast<int>(std::clamp<double>(runtime::ToDouble(field->text()), kFirstHour, kLastHour));
}

}  // namespace

frmItemSpotsDetail::frmItemSpotsDetail(QWidget* owner)
    : EditorForm(owner),
      ui_(std::make_unique<Ui::frmItemSpotsDetail>()),
      fields_({u"Item-spot"_s, u"Info-spot kiezen"_s, &Catalogue::itemSpots, ItemsWithSpot}, *this) {
  ui_->setupUi(this);
  constexpr QSize kOpeningSize(920, 668);
  fields_.Wire(ControlsOf(*ui_), kOpeningSize);
  WireFields();
  WireSeries();
}

frmItemSpotsDetail::~frmItemSpotsDetail() = default;

void frmItemSpotsDetail::WireFields() {
  connect(ui_->cmdOk, &QPushButton::clicked, this, &frmItemSpotsDetail::cmdOk_Click);
  connect(ui_->cmdAnnuleren, &QPushButton::clicked, this, &frmItemSpotsDetail::cmdAnnuleren_Click);
  connect(&fields_, &AudioFields::changed, this, &frmItemSpotsDetail::Changed);
  // A dropped file is assumed to run from today.
  connect(&fields_, &AudioFields::filledFromFile, this, [this] {
    if (ui_->cobStart->Text().isEmpty()) ui_->cobStart->SetText(runtime::DateText(runtime::Now().date()));
  });
  for (const controls::DateCombo* date : {ui_->cobStart, ui_->cobStop})
    connect(date, &controls::DateCombo::textChanged, this, &frmItemSpotsDetail::DateOrHourChanged);
  for (const QLineEdit* hour : {ui_->txtStartUur, ui_->txtEindUur})
    connect(hour, &QLineEdit::textChanged, this, &frmItemSpotsDetail::DateOrHourChanged);
  connect(&ui_->preview->Player(), &audio::AudioPlayer::stopped, this, &frmItemSpotsDetail::Player_Stop);
  ui_->preview->SetNextSound([this] { return NextSound(); });
  connect(ui_->chkAktief, &QCheckBox::toggled, this, &frmItemSpotsDetail::ShowValidity);
  connect(ui_->txtPath, &QLineEdit::textChanged, this, &frmItemSpotsDetail::ShowValidity);
  connect(ui_->preview, &AudioPreview::filePresenceChanged, this, &frmItemSpotsDetail::ShowValidity);
}

QString frmItemSpotsDetail::NextSound() const {
  if (isNew_) return {};
  const QDateTime now = runtime::Now();
  for (const Block& block : ReadBlocks(CurrentCatalogue())) {
    const std::vector<PlannedSound> sounds = PlanBlock(block, now, SeedOf(block.id, now), {}).sounds;
    for (std::size_t at = 0; at + 1 < sounds.size(); ++at) {
      if (sounds[at].kind == SoundKind::Spot && sounds[at].id == id_) return sounds[at + 1].path;
    }
  }
  return {};
}

void frmItemSpotsDetail::Loaded() {
  fields_.Open();
  ShowSeries();
}

void frmItemSpotsDetail::InitForm() {
  Trapped(__func__, [&] { setWindowTitle(fields_.Caption()); });
}

void frmItemSpotsDetail::FillForm() {
  Trapped(__func__, [&] {
    if (isNew_) FillNew();
    const dao::Recordset row = fields_.ReadRecord();
    if (!row.Eof()) FillRecord(row);
    MarkLoaded();
  });
}

void frmItemSpotsDetail::FillNew() {
  fields_.FillNew();
  ui_->txtStartUur->setText(QString::number(kFirstHour));
  ui_->txtEindUur->setText(QString::number(kLastHour));
}

// The order decides what is shown when a field cannot be read.
void frmItemSpotsDetail::FillRecord(const dao::Recordset& row) {
  fields_.FillPath(row);
  fields_.FillNaam(row);
  fields_.FillLengteSec(row);
  FillDate(ui_->cobStart, row.Field(u"StartDatum"_s));
  FillNumber(ui_->txtStartUur, row.Field(u"StartUur"_s));
  FillDate(ui_->cobStop, row.Field(u"EindDatum"_s));
  FillNumber(ui_->txtEindUur, row.Field(u"EindUur"_s));
  FillNumber(ui_->txtAantalGedraaid, row.Field(u"Aantalgedraaid"_s));
  const QVariant played = row.Field(u"LaatstGedraaid"_s);
  if (!played.isNull()) ui_->txtLaatstGedraaid->setText(MomentText(played));
  fields_.FillAktief(row);
  fields_.FillMixPunt(row);
}

void frmItemSpotsDetail::InitControls() {
  Trapped(__func__, [&] {
    for (const QString& field : {u"txtPath"_s, u"txtLengteSec"_s, u"txtAantalGedraaid"_s, u"txtLaatstGedraaid"_s})
      LockControl(field, true);
  });
}

bool frmItemSpotsDetail::OpslaanProceed() {
  return Trapped(__func__, false, [&] { return Accept(fields_.Check()) && ValidityProceed(); });
}

bool frmItemSpotsDetail::ValidityProceed() {
  ValidityInput input{ui_->cobStart->HoldsDate(), ui_->txtStartUur->text(), ui_->cobStop->HoldsDate(),
                      ui_->txtEindUur->text()};
  const std::optional<Refusal> refusal = CheckValidity(input);
  if (input.startUur != ui_->txtStartUur->text()) ui_->txtStartUur->setText(input.startUur);
  if (input.eindUur != ui_->txtEindUur->text()) ui_->txtEindUur->setText(input.eindUur);
  return Accept(refusal);
}

StoredValues frmItemSpotsDetail::ReadStoredValues() const {
  return ValuesOf(fields_.ReadRecord(), {u"Path"_s, u"Naam"_s, u"LengteSec"_s, u"StartPunt"_s, u"Mixpunt"_s,
                                         u"StartDatum"_s, u"StartUur"_s, u"EindDatum"_s, u"EindUur"_s, u"Aktief"_s});
}

void frmItemSpotsDetail::EmptyFields() {
  fields_.Empty();
  ui_->cobStart->SetText({});
  ui_->cobStop->SetText({});
  ui_->txtStartUur->clear();
  ui_->txtEindUur->clear();
}

// Dirty until every step succeeded: after a failure the form stays open with the user's input.
void frmItemSpotsDetail::Opslaan() {
  Trapped(__func__, [&] {
    isDirty_ = true;
    const auto succeeded = fields_.Write([this](qint32 id, const QString& databasePath, const QString& table) {
      return (isNew_ ? Insert_tblItemSpots : Update_tblItemSpots)(RowToSave(id), databasePath, table);
    });
    if (!succeeded) return;
    isDirty_ = !*succeeded;
    NoteSavedTimes(TimesOnScreen());
  });
}

ItemSpotRow frmItemSpotsDetail::RowToSave(qint32 id) const {
  ItemSpotRow row;
  row.id = id;
  row.path = fields_.PathToSave();
  row.naam = fields_.NaamToSave();
  row.lengteSec = fields_.LengteSecToSave();
  row.startPunt = 0;
  row.mixpunt = fields_.MixPuntToSave();
  row.startDatum = DayToSave(ui_->cobStart);
  row.startUur = HourToSave(ui_->txtStartUur, kFirstHour);
  row.eindDatum = DayToSave(ui_->cobStop);
  row.eindUur = HourToSave(ui_->txtEindUur, kLastHour);
  row.aktief = fields_.AktiefToSave();
  return row;
}

void frmItemSpotsDetail::cmdOk_Click() {
  Trapped(__func__, [&] { SaveAndClose(); });
}

void frmItemSpotsDetail::cmdAnnuleren_Click() {
  Trapped(__func__, [&] { CancelAndClose(); });
}

void frmItemSpotsDetail::Form_Unload() {
  ui_->preview->Close();
}

void frmItemSpotsDetail::DateOrHourChanged() {
  Changed();
  ShowValidity();
}

// A final update: the panels show where playback ended.
void frmItemSpotsDetail::Player_Stop() {
  ui_->preview->TmrPlayer().stop();
  ui_->preview->DrawTime();
}

void frmItemSpotsDetail::ShowValidity() {
  SpotFacts spot;
  spot.path = fields_.PathToSave();
  spot.aktief = ui_->chkAktief->isChecked();
  spot.startDatum = ui_->cobStart->Date();
  spot.eindDatum = ui_->cobStop->Date();
  spot.startUur = HourOf(ui_->txtStartUur);
  spot.eindUur = HourOf(ui_->txtEindUur);
  spot.file = ui_->preview->FilePresence(spot.path);
  ui_->lblGeldigheid->Show(RemarkOn(spot, runtime::Now()));
}
