// SPDX-License-Identifier: MIT
// Filling, checking and saving the common fields.
#include "data/AudioList.h"
#include "data/AudioRules.h"
#include "data/Catalogue.h"
#include "data/LogQueue.h"
#include "data/Text.h"
#include "data/Writes.h"
#include "media/AudioFields.h"
#include "media/AudioPreview.h"
#include "platform/dao/Database.h"
#include "platform/desktop/WaitPointer.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Trapped.h"

#include <QCheckBox>
#include <QLineEdit>

#include <optional>

using namespace Qt::StringLiterals;
using runtime::Trapped;

dao::Recordset AudioFields::ReadRecord() const {
  const QString table = TableName();
  dao::Database database = dao::OpenDatabase(CurrentCatalogue().databasePath);
  return database.OpenRecordset(u"SELECT "_s + table + u".* " + u"From " + table + u" " + u"WHERE " + table +
                                u".ID = " + QString::number(editor_.ID()));
}

void AudioFields::FillNew() {
  controls_.chkAktief->setChecked(true);
}

// A file that cannot be opened is reported once here; the other fields are still filled.
void AudioFields::FillPath(const dao::Recordset& row) {
  const QVariant path = row.Field(u"Path"_s);
  if (path.isNull()) return;
  const QString text = runtime::TrimBlanks(path.toString());
  controls_.txtPath->setText(text);
  Trapped("FillForm", [&] { controls_.preview->LaadBestand(text); });
}

void AudioFields::FillNaam(const dao::Recordset& row) {
  const QVariant naam = row.Field(u"Naam"_s);
  if (!naam.isNull()) controls_.txtNaam->setText(runtime::TrimBlanks(naam.toString()));
}

// The measured length replaces the stored one.
void AudioFields::FillLengteSec(const dao::Recordset& row) {
  const QVariant lengte = row.Field(u"LengteSec"_s);
  if (!runtime::IsNumeric(lengte) || !IsKull(controls_.txtLengteSec->text())) return;
  controls_.txtLengteSec->setText(QString::number(runtime::ToLong(lengte)));
}

void AudioFields::FillMixPunt(const dao::Recordset& row) {
  const QVariant mixPunt = row.Field(u"Mixpunt"_s);
  if (runtime::IsNumeric(mixPunt)) controls_.preview->FillMix(runtime::ToLong(mixPunt));
}

void AudioFields::FillAktief(const dao::Recordset& row) {
  const QVariant aktief = row.Field(u"Aktief"_s);
  if (runtime::IsNumeric(aktief)) controls_.chkAktief->setChecked(runtime::ToLong(aktief) != 0);
}

void AudioFields::Empty() {
  controls_.txtPath->clear();
  controls_.txtNaam->clear();
  controls_.txtLengteSec->clear();
  controls_.chkAktief->setChecked(false);
  controls_.preview->FillMix(0);
  pathChanged_ = false;
}

QString AudioFields::PathToSave() const {
  return runtime::TrimBlanks(controls_.txtPath->text());
}

QString AudioFields::NaamToSave() const {
  return runtime::TrimBlanks(controls_.txtNaam->text());
}

qint32 AudioFields::LengteSecToSave() const {
  const QString lengte = controls_.txtLengteSec->text();
  return runtime::IsNumeric(lengte) ? runtime::ToLong(lengte) : 0;
}

qint32 AudioFields::MixPuntToSave() const {
  return controls_.preview->MixPunt();
}

qint32 AudioFields::AktiefToSave() const {
  return controls_.chkAktief->isChecked() ? 1 : 0;
}

std::optional<Refusal> AudioFields::Check() const {
  const AudioInput input{controls_.txtPath->text(), controls_.txtNaam->text()};
  return CheckAudio(input, [this] { return IsDuplicateCode(); });
}

bool AudioFields::IsDuplicateCode() const {
  return Trapped(__func__, false, [&] {
    return NameExists(CurrentCatalogue().databasePath, TableName(), controls_.txtNaam->text(), editor_.IsNew(),
                      editor_.ID());
  });
}

std::optional<bool> AudioFields::Write(
    const std::function<bool(qint32 id, const QString& databasePath, const QString& table)>& write) {
  editor_.RequireLoaded();
  const desktop::WaitPointer wait;
  RequireStillThere();
  const bool wasNew = editor_.IsNew();
  const QString databasePath = CurrentCatalogue().databasePath;
  const QString table = TableName();
  const auto succeeded =
      editor_.WriteRecord(databasePath, table, [&](qint32 id) { return write(id, databasePath, table); });
  if (succeeded) AddToAudioList(wasNew);
  return succeeded;
}

void AudioFields::RequireStillThere() const {
  if (editor_.IsNew() || !ReadRecord().Eof()) return;
  throw runtime::Error(
      u"'%1' kan niet bewaard worden: het is intussen verwijderd uit %2."_s.arg(NaamToSave(), TableName()));
}

void AudioFields::AddToAudioList(bool wasNew) {
  pathChanged_ = pathChanged_ || wasNew;
  const bool waitsForLog = WaitsForLog();
  if (pathChanged_ && !waitsForLog) AppendToAudioList(PathToSave());
  // The line of a queued statement is added when that statement is logged.
  if (pathChanged_) pathChanged_ = waitsForLog && !QueueAudioPath(PathToSave());
}
