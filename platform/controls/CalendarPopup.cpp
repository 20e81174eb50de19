// SPDX-License-Identifier: MIT
#include "platform/controls/CalendarPopup.h"

#include "platform/desktop/Icons.h"

#include <QCalendarWidget>
#include <QScreen>
#include <QTextCharFormat>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace controls {

using namespace Qt::StringLiterals;

CalendarPopup::CalendarPopup(QWidget* field, const QDate& shown)
    : QFrame(field, Qt::Popup), field_(field), calendar_(new QCalendarWidget(this)) {
  setAttribute(Qt::WA_DeleteOnClose);
  setFrameShape(QFrame::StyledPanel);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(2, 2, 2, 2);
  layout->addWidget(calendar_);
  calendar_->setLocale(QLocale(QLocale::Dutch, QLocale::Belgium));
  calendar_->setFirstDayOfWeek(Qt::Monday);
  calendar_->setDateRange(QDate(100, 1, 1), QDate(9999, 12, 31));
  calendar_->setSelectedDate(shown);
  // Weekends get the normal text colour instead of Qt's red.
  for (const auto day : {Qt::Saturday, Qt::Sunday})
    calendar_->setWeekdayTextFormat(day, QTextCharFormat());
  SetArrow(u"qt_calendar_prevmonth"_s, u"rew"_s);
  SetArrow(u"qt_calendar_nextmonth"_s, u"ffw"_s);
  const auto pick = [this](const QDate& date) {
    Q_EMIT picked(date);
    close();
  };
  connect(calendar_, &QCalendarWidget::clicked, this, pick);
  connect(calendar_, &QCalendarWidget::activated, this, pick);
}

// Sets the program's own arrow icon. The object names of Qt's buttons are documented for style sheets, hence stable.
void CalendarPopup::SetArrow(const QString& button, const QString& icon) {
  if (auto* arrow = calendar_->findChild<QToolButton*>(button))
    arrow->setIcon(desktop::Icon(icon, desktop::IconTint::OnHighlight));
}

void CalendarPopup::Open() {
  adjustSize();
  QPoint place = field_->mapToGlobal(QPoint(0, field_->height() + 2));
  if (const QScreen* screen = field_->screen()) {
    const QRect room = screen->availableGeometry();
    if (place.y() + height() > room.bottom()) place = field_->mapToGlobal(QPoint(0, -height() - 2));
    place.setX(std::clamp(place.x(), room.left(), std::max(room.left(), room.right() - width())));
  }
  move(place);
  show();
  calendar_->setFocus();
}

}  // namespace controls
