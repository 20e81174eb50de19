// SPDX-License-Identifier: MIT
#include "platform/controls/DateCombo.h"

#include "platform/controls/CalendarPopup.h"
#include "platform/desktop/Icons.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/Dates.h"

#include <QAction>
#include <QKeyEvent>

namespace controls {
namespace {

using namespace Qt::StringLiterals;

QString Formatted(const QDate& date) {
  return u"%1-%2-%3"_s.arg(date.day(), 2, 10, QChar(u'0'))
      .arg(date.month(), 2, 10, QChar(u'0'))
      .arg(date.year(), 4, 10, QChar(u'0'));
}

}  // namespace

DateCombo::DateCombo(QWidget* parent)
    : QLineEdit(parent),
      calendarAction_(addAction(desktop::Icon(u"kalender"_s, desktop::IconTint::Quiet), TrailingPosition)) {
  calendarAction_->setText(tr("Kalender"));
  calendarAction_->setToolTip(tr("Kalender (Alt+pijl omlaag)"));
  connect(calendarAction_, &QAction::triggered, this, &DateCombo::OpenCalendar);
}

std::optional<QDate> DateCombo::Date() const {
  return runtime::ParseDate(text());
}

void DateCombo::SetDate(std::optional<QDate> date) {
  setText(date ? Formatted(*date) : QString());
}

void DateCombo::OpenCalendar() {
  if (isReadOnly() || !isEnabled()) return;
  auto* popup = new CalendarPopup(this, Date().value_or(runtime::Now().date()));
  connect(popup, &CalendarPopup::picked, this, [this](const QDate& date) {
    SetDate(date);
    setFocus();
  });
  popup->Open();
}

void DateCombo::keyPressEvent(QKeyEvent* event) {
  const bool altDown = event->key() == Qt::Key_Down && event->modifiers().testFlag(Qt::AltModifier);
  if (!altDown && event->key() != Qt::Key_F4) return QLineEdit::keyPressEvent(event);
  event->accept();
  OpenCalendar();
}

void DateCombo::focusOutEvent(QFocusEvent* event) {
  if (const auto date = Date(); date && !isReadOnly()) setText(Formatted(*date));
  QLineEdit::focusOutEvent(event);
}

void DateCombo::changeEvent(QEvent* event) {
  QLineEdit::changeEvent(event);
  if (event->type() == QEvent::ReadOnlyChange) calendarAction_->setEnabled(!isReadOnly());
}

}  // namespace controls
