// SPDX-License-Identifier: MIT
// The calendar of a date field.
#include "platform/controls/CalendarPopup.h"
#include "platform/controls/DateCombo.h"
#include "platform/runtime/Clock.h"

#include <QApplication>
#include <QCalendarWidget>
#include <QPointer>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace {

using namespace Qt::StringLiterals;
using controls::CalendarPopup;
using controls::DateCombo;

QCalendarWidget& CalendarOf(const QWidget& field) {
  return *field.findChild<QCalendarWidget*>();
}

class Calendar : public testing::Test {
 protected:
  Calendar() {
    field.resize(120, 28);
    field.show();
  }
  DateCombo field;
};

TEST_F(Calendar, ShowsTheDateOfTheFieldOrElseToday) {
  const runtime::ClockScope clock(QDateTime(QDate(2031, 5, 17), QTime(23, 59)));
  field.OpenCalendar();
  EXPECT_EQ(CalendarOf(field).selectedDate(), QDate(2031, 5, 17));
  CalendarOf(field).parentWidget()->close();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  field.SetText(u"geen datum"_s);
  field.OpenCalendar();
  EXPECT_EQ(CalendarOf(field).selectedDate(), QDate(2031, 5, 17));
  CalendarOf(field).parentWidget()->close();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  field.SetText(u"3-4-2029"_s);
  field.OpenCalendar();
  EXPECT_EQ(CalendarOf(field).selectedDate(), QDate(2029, 4, 3));
}

TEST_F(Calendar, OpensByF4AndAltDownAndNotByDown) {
  QTest::keyClick(&field, Qt::Key_Down);
  EXPECT_EQ(field.findChild<QCalendarWidget*>(), nullptr);
  for (const auto& [key, modifier] : {std::pair{Qt::Key_F4, Qt::NoModifier}, {Qt::Key_Down, Qt::AltModifier}}) {
    QTest::keyClick(&field, key, modifier);
    ASSERT_NE(field.findChild<QCalendarWidget*>(), nullptr) << key;
    CalendarOf(field).parentWidget()->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
}

TEST_F(Calendar, WeekBeginsOnMondayInDutch) {
  field.OpenCalendar();
  const QCalendarWidget& calendar = CalendarOf(field);
  EXPECT_EQ(calendar.firstDayOfWeek(), Qt::Monday);
  EXPECT_EQ(calendar.locale().language(), QLocale::Dutch);
  EXPECT_EQ(calendar.minimumDate(), QDate(100, 1, 1));
  EXPECT_EQ(calendar.maximumDate(), QDate(9999, 12, 31));
  for (const auto day : {Qt::Saturday, Qt::Sunday})
    EXPECT_FALSE(calendar.weekdayTextFormat(day).hasProperty(QTextFormat::ForegroundBrush));
}

TEST_F(Calendar, EnterPicksTheSelectedDayAndClosesIt) {
  field.SetText(u"3-4-2029"_s);
  field.OpenCalendar();
  const QPointer<QWidget> popup = CalendarOf(field).parentWidget();
  CalendarOf(field).setSelectedDate(QDate(2029, 4, 30));
  Q_EMIT CalendarOf(field).activated(QDate(2029, 4, 30));
  EXPECT_EQ(field.Text(), u"30-04-2029"_s);
  EXPECT_FALSE(popup->isVisible());
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_EQ(popup, nullptr);
}

TEST_F(Calendar, ClosingWithoutAChoiceKeepsTheText) {
  field.SetText(u"3-4-2029"_s);
  QSignalSpy changed(&field, &QLineEdit::textChanged);
  field.OpenCalendar();
  CalendarOf(field).setSelectedDate(QDate(2029, 4, 30));
  CalendarOf(field).parentWidget()->close();
  EXPECT_EQ(field.Text(), u"3-4-2029"_s);
  EXPECT_EQ(changed.count(), 0);
}

TEST_F(Calendar, IsOnTheScreenBelowTheFieldOrAboveIt) {
  constexpr int kFrame = 2;  // that the offscreen platform adds to a window
  const QRect screen = field.screen()->availableGeometry();
  const auto popupAt = [this](QPoint place) {
    field.move(place);
    auto* popup = new CalendarPopup(&field, QDate(2029, 4, 3));
    popup->Open();
    const QRect where(popup->pos(), popup->size());
    popup->close();
    return where;
  };
  const QRect below = popupAt(screen.topLeft() + QPoint(50, 50));
  EXPECT_GT(below.top(), field.mapToGlobal(QPoint(0, field.height())).y());
  EXPECT_NEAR(below.left(), field.mapToGlobal(QPoint()).x(), kFrame);
  const QRect above = popupAt(QPoint(screen.left() + 50, screen.bottom() - 40));
  EXPECT_LT(above.bottom(), field.mapToGlobal(QPoint()).y());
  const QRect atTheEdge = popupAt(QPoint(screen.right() - 20, screen.top() + 50));
  EXPECT_LE(atTheEdge.right(), screen.right() + kFrame);
}

}  // namespace
