// SPDX-License-Identifier: MIT
#include "catalogue/OverviewBar.h"

#include "platform/controls/QuietLine.h"
#include "platform/desktop/Icons.h"

#include <QHBoxLayout>
#include <QLocale>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

QString Number(int count) {
  return QLocale(QLocale::Dutch).toString(count);
}

}  // namespace

OverviewBar::OverviewBar(QWidget* parent) : QWidget(parent), lblMelding_(new controls::QuietLine(this)) {
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins({});
  row->setSpacing(8);
  lblMelding_->setObjectName(u"lblMelding"_s);
  row->addWidget(lblMelding_, 1);
  cmdOngedaan_ = Add(u"cmdOngedaan"_s, &OverviewBar::undoRequested);
  cmdDesaktiveerAlle_ = Add(u"cmdDesaktiveerAlle"_s, &OverviewBar::deactivateRequested);
  cmdEinddatum_ = Add(u"cmdEinddatum"_s, &OverviewBar::eindDatumRequested);
  cmdUren_ = Add(u"cmdUren"_s, &OverviewBar::urenRequested);
  cmdDupliceren_ = Add(u"cmdDupliceren"_s, &OverviewBar::duplicateRequested);
  cmdOngedaan_->setText(tr("On&gedaan maken"));
  cmdOngedaan_->setToolTip(tr("Ongedaan maken (Ctrl+Z)"));
  cmdOngedaan_->hide();
  cmdEinddatum_->setText(tr("&Einddatum ..."));
  cmdEinddatum_->setToolTip(tr("Een andere einddatum voor alle gemarkeerde item-spots"));
  cmdUren_->setText(tr("U&ren ..."));
  cmdUren_->setToolTip(tr("Andere uren voor alle gemarkeerde item-spots"));
  cmdDupliceren_->setToolTip(tr("Een kopie met een vrije naam (Ctrl+D)"));
  ShowMarked(0);
}

QPushButton* OverviewBar::Add(const QString& name, void (OverviewBar::*signal)()) {
  auto* button = new QPushButton(this);
  button->setObjectName(name);
  button->setAutoDefault(false);
  connect(button, &QPushButton::clicked, this, signal);
  layout()->addWidget(button);
  return button;
}

void OverviewBar::Choose(bool aktief, bool validity, QWidget* before, QWidget* after) {
  hasAktief_ = aktief;
  hasValidity_ = validity;
  QWidget* last = before;
  for (QPushButton* button : {cmdOngedaan_, cmdDesaktiveerAlle_, cmdEinddatum_, cmdUren_, cmdDupliceren_}) {
    setTabOrder(last, button);
    last = button;
  }
  setTabOrder(last, after);
}

void OverviewBar::ShowMarked(int count) {
  marked_ = count;
  const bool several = count > 1;
  cmdDesaktiveerAlle_->setVisible(hasAktief_ && several);
  cmdEinddatum_->setVisible(hasValidity_ && several);
  cmdUren_->setVisible(hasValidity_ && several);
  cmdDesaktiveerAlle_->setText(tr("%1 desakt&iveren").arg(Number(count)));
  cmdDupliceren_->setText(several ? tr("%1 du&pliceren").arg(Number(count)) : tr("Du&pliceren"));
  cmdDupliceren_->setEnabled(count > 0);
  ShowText();
}

void OverviewBar::ShowResult(const QString& text, bool canUndo) {
  result_ = text;
  cmdOngedaan_->setVisible(canUndo);
  ShowText();
}

void OverviewBar::ShowText() {
  QString text = result_;
  if (marked_ > 1) text = Number(marked_) + u" gemarkeerd"_s;
  lblMelding_->setText(text);
  lblMelding_->setToolTip(text);
}
