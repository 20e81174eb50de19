// SPDX-License-Identifier: MIT
#include "media/AudioFields.h"

#include "data/Text.h"
#include "data/Usage.h"
#include "media/AudioPreview.h"
#include "platform/desktop/FileDrop.h"
#include "platform/desktop/Icons.h"
#include "platform/desktop/TextAsToolTip.h"
#include "platform/runtime/Error.h"

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

AudioFields::AudioFields(const Kind& kind, EditorForm& editor) : kind_(kind), editor_(editor) {
  codFile_.SetTitle(kind_.chooserTitle);
  codFile_.SetKind(kind_.caption);
  codFile_.SetFilter(u"Mpeg-3 (*.MP3)|*.MP3|Wave bestanden (*.WAV) |*.WAV"_s);
}

void AudioFields::Wire(const AudioControls& controls, QSize openingSize) {
  controls_ = controls;
  controls_.cmdPath->setIcon(desktop::Icon(u"geluid"_s));
  desktop::ShowTextAsToolTip(controls_.txtPath);
  controls_.preview->Attach(controls_.txtPath, controls_.txtLengteSec, controls_.lblLuidheid);
  connect(controls_.cmdPath, &QPushButton::clicked, this, &AudioFields::cmdPath_Click);
  connect(controls_.cmdFillName, &QPushButton::clicked, this, &AudioFields::cmdFillName_Click);
  for (const QLineEdit* field : {controls_.txtNaam, controls_.txtPath, controls_.txtLengteSec})
    connect(field, &QLineEdit::textChanged, this, &AudioFields::changed);
  connect(controls_.chkAktief, &QCheckBox::toggled, this, &AudioFields::changed);
  const auto* drop = new desktop::FileDrop(&editor_);
  connect(drop, &desktop::FileDrop::dropped, this, &AudioFields::Form_DropFiles);
  SetMargins();
  WireScrolling();
  // Wide enough for its texts, whatever the font: labels would scroll out of sight.
  const QSize page = controls_.scrInhoud->widget()->minimumSizeHint();
  editor_.resize(openingSize.expandedTo(QSize(page.width(), 0)).boundedTo(editor_.screen()->availableSize()));
}

// The pages of fields and buttons have no margins; give them those of the window.
void AudioFields::SetMargins() {
  const int margin = editor_.style()->pixelMetric(QStyle::PM_LayoutLeftMargin, nullptr, &editor_);
  const int between = margin * 3 / 4;
  controls_.scrInhoud->widget()->layout()->setContentsMargins(margin, margin, margin, margin - between);
  controls_.cmdOk->parentWidget()->layout()->setContentsMargins(margin, between, margin, margin);
}

// On a small screen the fields scroll above the buttons: show a line between them, and keep the focus visible.
void AudioFields::WireScrolling() {
  controls_.linKnoppen->hide();
  connect(
      controls_.scrInhoud->verticalScrollBar(), &QScrollBar::rangeChanged, controls_.linKnoppen,
      [line = controls_.linKnoppen](int, int maximum) { line->setVisible(maximum > 0); },
      Qt::QueuedConnection);  // the range changes during layout
  connect(qApp, &QApplication::focusChanged, this, [this](const QWidget*, QWidget* now) {
    if (now != nullptr && controls_.scrInhoud->isAncestorOf(now)) controls_.scrInhoud->ensureWidgetVisible(now);
  });
}

void AudioFields::Open() {
  controls_.preview->InitAudio();
  TakeDropped();
  if (!editor_.IsNew()) QTimer::singleShot(0, this, &AudioFields::ShowUsage);  // after the window is shown
  // The focus starts on the file of a new record, else on the name. Qt selects the complete name when the window opens;
  // deselect it, so that the first key does not replace it.
  (editor_.IsNew() && IsKull(controls_.txtPath->text()) ? static_cast<QWidget*>(controls_.cmdPath) : controls_.txtNaam)
      ->setFocus();
  QTimer::singleShot(0, controls_.txtNaam, &QLineEdit::deselect);
}

QString AudioFields::TableName() const {
  return CurrentCatalogue().*kind_.table;
}

QString AudioFields::Caption() const {
  return kind_.caption + (editor_.IsNew() ? u" ... nieuw"_s : u" ... detail"_s);
}

// Optional, so it is left empty after an error.
void AudioFields::ShowUsage() {
  try {
    const QStringList items = kind_.itemsUsing(editor_.ID(), CurrentCatalogue());
    controls_.lblToelichting->setText(UsageText(items));
    controls_.lblToelichting->setToolTip(items.join(u'\n'));
  } catch (const runtime::Error&) {
    controls_.lblToelichting->clear();
  }
}
