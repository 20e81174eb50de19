// SPDX-License-Identifier: MIT
// Choosing a record's file: the file dialog, or files dropped on a list or on the editor.
#include "data/Messages.h"
#include "data/Text.h"
#include "data/forms/DroppedAudio.h"
#include "media/AudioFields.h"
#include "media/AudioPreview.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/HostPath.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Trapped.h"

#include <QLabel>
#include <QLineEdit>

using namespace Qt::StringLiterals;
using runtime::Trapped;

void AudioFields::cmdPath_Click() {
  Trapped(__func__, [&] {
    codFile_.SetStartFolder(controls_.preview->LastFolder());
    TakeFile(codFile_.ShowOpen(&editor_));
  });
}

void AudioFields::TakeFile(const QString& hostPath) {
  WarnWhenUnmapped(hostPath);
  const QString bestand = hostPath.isEmpty() ? QString() : runtime::PathText(hostPath);
  controls_.preview->LaadBestand(bestand);
  controls_.txtPath->setText(runtime::TrimBlanks(bestand));
  Q_EMIT changed();
  pathChanged_ = true;
}

void AudioFields::WarnWhenUnmapped(const QString& hostPath) {
  if (hostPath.isEmpty() || runtime::IsMapped(hostPath)) return;
  ShowItemsMessage(
      u"'%1' ligt buiten de schijven die in ovalis.ini staan (sectie [Drives]).\r\nAndere computers "
      u"vinden dit bestand niet."_s.arg(hostPath),
      kStyleExclamation);
}

void AudioFields::cmdFillName_Click() {
  Trapped(__func__, [&] {
    constexpr qsizetype kExtension = 4;  // including the point: ".MP3"
    if (IsKull(controls_.txtPath->text())) return;
    const QString file = GetFile(controls_.txtPath->text());
    controls_.txtNaam->setText(file);
    if (file.size() < kExtension) {
      throw runtime::Error(u"De bestandsnaam '%1' is te kort om er een naam van te maken."_s.arg(file));
    }
    controls_.txtNaam->setText(file.chopped(kExtension));
    Q_EMIT changed();
  });
}

// One dropped file is used for this record, as if chosen with the dialog. Several files each become a new record, so
// the editor must be on a new record.
void AudioFields::Form_DropFiles(const QStringList& files) {
  Trapped(__func__, [&] {
    const QStringList audio = AcceptedAudio(files);
    if (audio.size() > 1 && !editor_.IsNew()) {
      ShowItemsMessage(
          u"Zet hier één geluidsbestand neer: dit venster wijzigt één bestaand record.\r\nMeer bestanden "
          u"tegelijk kunnen op de lijst, of op het venster van een nieuw record."_s,
          kStyleExclamation);
    } else if (audio.size() == 1 && DroppedAudioLeft() == 0) {
      TakeFile(audio.first());
      FillFromFile();
    } else {
      QueueDroppedAudio(audio);
      TakeDropped();
      ShowWaiting();
    }
  });
}

// A new record without a file uses the first queued file.
void AudioFields::TakeDropped() {
  Trapped(__func__, [&] {
    if (!editor_.IsNew() || !IsKull(controls_.txtPath->text())) return;
    const QString file = TakeDroppedAudio();
    ShowWaiting();
    if (file.isNull()) return;
    TakeFile(file);
    FillFromFile();
  });
}

// Fields that a new record gets from its file besides path and length.
void AudioFields::FillFromFile() {
  if (!editor_.IsNew()) return;
  if (IsKull(controls_.txtNaam->text())) cmdFillName_Click();
  Q_EMIT filledFromFile();
}

void AudioFields::ShowWaiting() {
  const qsizetype left = DroppedAudioLeft();
  const QString text = left == 1 ? u"Nog 1 bestand wacht"_s : u"Nog %1 bestanden wachten"_s.arg(left);
  controls_.lblToelichting->setText(left == 0 ? QString() : text);
  Q_EMIT waitingChanged();
}
