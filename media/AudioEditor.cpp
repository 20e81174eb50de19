// SPDX-License-Identifier: MIT
#include "media/AudioEditor.h"

#include "data/Catalogue.h"
#include "data/Messages.h"
#include "data/Text.h"
#include "data/Usage.h"
#include "media/AudioPreview.h"
#include "platform/dao/Database.h"
#include "platform/desktop/FileDrop.h"
#include "platform/desktop/Icons.h"
#include "platform/desktop/TextAsToolTip.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/HostPath.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Trapped.h"

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QStyle>
#include <QTimer>

using namespace Qt::StringLiterals;
using runtime::Trapped;

AudioEditor::AudioEditor(const Words& words, QWidget* owner) : EditorForm(owner), words_(words) {
  codFile_.SetTitle(words_.chooserTitle);
  codFile_.SetKind(words_.caption);
  codFile_.SetFilter(u"Mpeg-3 (*.MP3)|*.MP3|Wave bestanden (*.WAV) |*.WAV"_s);
}

void AudioEditor::Wire(const AudioControls& controls, QSize openingSize) {
  controls_ = controls;
  controls_.cmdPath->setIcon(desktop::Icon(u"geluid"_s));
  desktop::ShowTextAsToolTip(controls_.txtPath);
  controls_.preview->Attach(controls_.txtPath, controls_.txtLengteSec, controls_.lblLuidheid);
  connect(controls_.cmdPath, &QPushButton::clicked, this, &AudioEditor::cmdPath_Click);
  connect(controls_.cmdFillName, &QPushButton::clicked, this, &AudioEditor::cmdFillName_Click);
  connect(controls_.cmdOk, &QPushButton::clicked, this, &AudioEditor::cmdOk_Click);
  connect(controls_.cmdAnnuleren, &QPushButton::clicked, this, &AudioEditor::cmdAnnuleren_Click);
  connect(controls_.txtNaam, &QLineEdit::textChanged, this, &AudioEditor::txtNaam_Change);
  connect(controls_.txtPath, &QLineEdit::textChanged, this, &AudioEditor::txtPath_Change);
  connect(controls_.txtLengteSec, &QLineEdit::textChanged, this, &AudioEditor::txtLengteSec_Change);
  connect(controls_.chkAktief, &QCheckBox::toggled, this, &AudioEditor::chkAktief_Click);
  const auto* drop = new desktop::FileDrop(this);
  connect(drop, &desktop::FileDrop::dropped, this, &AudioEditor::Form_DropFiles);
  SetMargins();
  WireScrolling();
  resize(openingSize.boundedTo(screen()->availableSize()));
}

// The pages of fields and buttons have no margins; give them those of the window.
void AudioEditor::SetMargins() {
  const int margin = style()->pixelMetric(QStyle::PM_LayoutLeftMargin, nullptr, this);
  const int between = margin * 3 / 4;
  controls_.scrInhoud->widget()->layout()->setContentsMargins(margin, margin, margin, margin - between);
  controls_.cmdOk->parentWidget()->layout()->setContentsMargins(margin, between, margin, margin);
}

// On a small screen the fields scroll above the buttons: show a line between them, and keep the focus visible.
void AudioEditor::WireScrolling() {
  controls_.linKnoppen->hide();
  connect(
      controls_.scrInhoud->verticalScrollBar(), &QScrollBar::rangeChanged, controls_.linKnoppen,
      [line = controls_.linKnoppen](int, int maximum) { line->setVisible(maximum > 0); },
      Qt::QueuedConnection);  // the range changes during layout
  connect(qApp, &QApplication::focusChanged, this, [this](const QWidget*, QWidget* now) {
    if (now != nullptr && controls_.scrInhoud->isAncestorOf(now)) controls_.scrInhoud->ensureWidgetVisible(now);
  });
}

void AudioEditor::Loaded() {
  controls_.preview->InitAudio();
  TakeDropped();
  if (!isNew_) QTimer::singleShot(0, this, &AudioEditor::ShowUsage);  // after the window is shown
  // The focus starts on the file of a new record, else on the name. Qt selects the complete name when the window opens;
  // deselect it, so that the first key does not replace it.
  (isNew_ && IsKull(controls_.txtPath->text()) ? static_cast<QWidget*>(controls_.cmdPath) : controls_.txtNaam)
      ->setFocus();
  QTimer::singleShot(0, controls_.txtNaam, &QLineEdit::deselect);
}

void AudioEditor::InitForm() {
  Trapped(__func__, [&] { setWindowTitle(words_.caption + (isNew_ ? u" ... nieuw"_s : u" ... detail"_s)); });
}

void AudioEditor::FillForm() {
  Trapped(__func__, [&] {
    if (isNew_) FillNew();
    dao::Recordset row = ReadRecord();
    if (!(row.Bof() && row.Eof())) {
      row.MoveFirst();
      FillRecord(row);
    }
    row.Close();
    MarkLoaded();
  });
}

// Optional, so it is left empty after an error.
void AudioEditor::ShowUsage() {
  try {
    const QStringList items = ItemsUsing(id_);
    controls_.lblToelichting->setText(UsageText(items));
    controls_.lblToelichting->setToolTip(items.join(u'\n'));
  } catch (const runtime::Error&) {
    controls_.lblToelichting->clear();
  }
}

void AudioEditor::FillNew() {
  controls_.chkAktief->setChecked(true);
}

void AudioEditor::InitControls() {
  Trapped(__func__, [&] {
    LockControl(u"txtPath"_s, true);
    LockControl(u"txtLengteSec"_s, true);
  });
}

dao::Recordset AudioEditor::ReadRecord() const {
  const QString table = TableName();
  dao::Database database = dao::OpenDatabase(CurrentCatalogue().databasePath);
  return database.OpenRecordset(u"SELECT "_s + table + u".* " + u"From " + table + u" " + u"WHERE " + table +
                                u".ID = " + QString::number(id_));
}

void AudioEditor::cmdOk_Click() {
  Trapped(__func__, [&] { SaveAndClose(); });
}

void AudioEditor::cmdAnnuleren_Click() {
  Trapped(__func__, [&] { CancelAndClose(); });
}

void AudioEditor::txtNaam_Change() {
  Trapped(__func__, [&] { Changed(); });
}

void AudioEditor::txtPath_Change() {
  Trapped(__func__, [&] { Changed(); });
}

void AudioEditor::txtLengteSec_Change() {
  Trapped(__func__, [&] { Changed(); });
}

void AudioEditor::chkAktief_Click() {
  Trapped(__func__, [&] { Changed(); });
}

void AudioEditor::Form_Unload() {
  controls_.preview->Close();
}
