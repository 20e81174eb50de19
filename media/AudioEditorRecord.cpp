// SPDX-License-Identifier: MIT
// Filling, validation and saving of a record.
#include "data/AudioList.h"
#include "data/AudioRules.h"
#include "data/Catalogue.h"
#include "data/KeptStatements.h"
#include "data/Lookups.h"
#include "data/Messages.h"
#include "data/Text.h"
#include "data/Writes.h"
#include "media/AudioEditor.h"
#include "media/AudioPreview.h"
#include "platform/desktop/WaitPointer.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Trapped.h"

#include <QCheckBox>
#include <QLineEdit>

#include <optional>

using namespace Qt::StringLiterals;
using runtime::Trapped;

// A file that cannot be opened is reported once here; the other fields are still filled.
void AudioEditor::FillPath(const dao::Recordset& row) {
  const QVariant path = row.Field(u"Path"_s);
  if (path.isNull()) return;
  const QString text = runtime::TrimBlanks(path.toString());
  controls_.txtPath->setText(text);
  Trapped("FillForm", [&] { controls_.preview->LaadBestand(text); });
}

void AudioEditor::FillNaam(const dao::Recordset& row) {
  const QVariant naam = row.Field(u"Naam"_s);
  if (!naam.isNull()) controls_.txtNaam->setText(runtime::TrimBlanks(naam.toString()));
}

// The measured length replaces the stored one.
void AudioEditor::FillLengteSec(const dao::Recordset& row) {
  const QVariant lengte = row.Field(u"LengteSec"_s);
  if (!runtime::IsNumeric(lengte) || !IsKull(controls_.txtLengteSec->text())) return;
  controls_.txtLengteSec->setText(QString::number(runtime::ToLong(lengte)));
}

void AudioEditor::FillMixPunt(const dao::Recordset& row) {
  const QVariant mixPunt = row.Field(u"Mixpunt"_s);
  if (runtime::IsNumeric(mixPunt)) controls_.preview->FillMix(runtime::ToLong(mixPunt));
}

void AudioEditor::FillAktief(const dao::Recordset& row) {
  const QVariant aktief = row.Field(u"Aktief"_s);
  if (runtime::IsNumeric(aktief)) controls_.chkAktief->setChecked(runtime::ToLong(aktief) != 0);
}

QString AudioEditor::PathToSave() const {
  return runtime::TrimBlanks(controls_.txtPath->text());
}

QString AudioEditor::NaamToSave() const {
  return runtime::TrimBlanks(controls_.txtNaam->text());
}

qint32 AudioEditor::LengteSecToSave() const {
  const QString lengte = controls_.txtLengteSec->text();
  return runtime::IsNumeric(lengte) ? runtime::ToLong(lengte) : 0;
}

qint32 AudioEditor::MixPuntToSave() const {
  return controls_.preview->MixPunt();
}

qint32 AudioEditor::AktiefToSave() const {
  return controls_.chkAktief->isChecked() ? 1 : 0;
}

bool AudioEditor::OpslaanProceed() {
  return Trapped(__func__, false, [&] {
    const AudioInput input{controls_.txtPath->text(), controls_.txtNaam->text()};
    return Accept(CheckAudio(input, [&] { return IsDuplicateCode(); })) && OwnFieldsValid();
  });
}

bool AudioEditor::IsDuplicateCode() {
  return Trapped(__func__, false, [&] {
    return NameExists(CurrentCatalogue().databasePath, TableName(), controls_.txtNaam->text(), isNew_, id_);
  });
}

// Dirty until every step succeeded: after a failure the form stays open with the user's input.
void AudioEditor::Opslaan() {
  Trapped(__func__, [&] {
    isDirty_ = true;
    RequireLoaded();
    const desktop::WaitPointer wait;
    const QString databasePath = CurrentCatalogue().databasePath;
    const QString table = TableName();
    if (!isNew_ && ReadRecord().Eof()) {
      throw runtime::Error(
          u"'%1' kan niet bewaard worden: het is intussen verwijderd uit %2."_s.arg(NaamToSave(), table));
    }
    const std::optional<qint32> id = isNew_ ? GetNewIDIfAny(table, table + u".ID", databasePath) : id_;
    if (!id) return;
    const bool succeeded = Write(*id, databasePath, table);
    if (!WasCarriedOut()) return;
    // The record exists now; if the audio list fails, the next OK updates the record and tries the list again.
    pathChanged_ = pathChanged_ || isNew_;
    id_ = *id;
    isNew_ = false;
    const bool waitsForLog = WaitsForLog();
    if (pathChanged_ && !waitsForLog) AppendToAudioList(PathToSave());
    // The line of a kept statement is added when that statement is logged.
    if (pathChanged_) pathChanged_ = waitsForLog && !KeepAudioPath(PathToSave());
    isDirty_ = !succeeded;
  });
}
