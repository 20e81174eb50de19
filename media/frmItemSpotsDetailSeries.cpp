// SPDX-License-Identifier: MIT
// The days, hours and state of the spot that was saved last, for this one and for the other dropped files.
#include "data/forms/DroppedAudio.h"
#include "media/SpotSeries.h"
#include "media/frmItemSpotsDetail.h"
#include "platform/runtime/Trapped.h"
#include "ui_frmItemSpotsDetail.h"

#include <QLocale>
#include <QShortcut>

using namespace Qt::StringLiterals;
using runtime::Trapped;

void frmItemSpotsDetail::WireSeries() {
  connect(ui_->cmdVorige, &QPushButton::clicked, this, &frmItemSpotsDetail::cmdVorige_Click);
  connect(ui_->cmdRest, &QPushButton::clicked, this, &frmItemSpotsDetail::cmdRest_Click);
  connect(&fields_, &AudioFields::waitingChanged, this, &frmItemSpotsDetail::ShowSeries);
  const auto* previous = new QShortcut(Qt::CTRL | Qt::Key_L, this);
  connect(previous, &QShortcut::activated, ui_->cmdVorige, &QPushButton::click);
  for (const Qt::Key enter : {Qt::Key_Return, Qt::Key_Enter}) {
    const auto* rest = new QShortcut(Qt::CTRL | enter, this);
    connect(rest, &QShortcut::activated, ui_->cmdRest, &QPushButton::click);
  }
}

// Both buttons are for new records only.
void frmItemSpotsDetail::ShowSeries() {
  const qsizetype waiting = DroppedAudioLeft();
  ui_->cmdVorige->setVisible(isNew_ && LastSavedTimes().has_value());
  ui_->cmdRest->setVisible(isNew_ && waiting > 0);
  const QString number = QLocale(QLocale::Dutch).toString(static_cast<qlonglong>(waiting));
  ui_->cmdRest->setText(waiting == 1 ? tr("Ook &voor de volgende") : tr("Ook &voor de volgende %1").arg(number));
}

SpotTimes frmItemSpotsDetail::TimesOnScreen() const {
  return {ui_->cobStart->Text(), ui_->txtStartUur->text(), ui_->cobStop->Text(), ui_->txtEindUur->text(),
          ui_->chkAktief->isChecked()};
}

void frmItemSpotsDetail::TakeLastTimes() {
  const std::optional<SpotTimes> times = LastSavedTimes();
  if (!times) return;
  ui_->cobStart->SetText(times->startDatum);
  ui_->txtStartUur->setText(times->startUur);
  ui_->cobStop->SetText(times->eindDatum);
  ui_->txtEindUur->setText(times->eindUur);
  ui_->chkAktief->setChecked(times->aktief);
}

void frmItemSpotsDetail::cmdVorige_Click() {
  Trapped(__func__, [&] { TakeLastTimes(); });
}

// This record as OK does; the others follow after this window has closed.
void frmItemSpotsDetail::cmdRest_Click() {
  Trapped(__func__, [&] {
    SaveAndClose();
    SetSavesRest(!isNew_ && !isDirty_);
  });
}

bool frmItemSpotsDetail::SaveLikeLast() {
  return Trapped(__func__, false, [&] {
    TakeLastTimes();
    SaveAndClose();
    return !isNew_ && !isDirty_;
  });
}
