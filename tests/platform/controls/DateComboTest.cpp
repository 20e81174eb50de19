// SPDX-License-Identifier: MIT
#include "platform/controls/DateCombo.h"

#include "platform/controls/CalendarPopup.h"
#include "platform/desktop/Lock.h"

#include <QApplication>
#include <QCalendarWidget>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>

#include <gtest/gtest.h>

#include <optional>

namespace {

using namespace Qt::StringLiterals;
using controls::DateCombo;

TEST(DateCombo, MayBeEmpty) {
  DateCombo combo;
  EXPECT_EQ(combo.Text(), QString());
  EXPECT_FALSE(combo.HoldsDate());
  combo.SetDate(QDate(2025, 3, 1));
  combo.SetDate(std::nullopt);
  EXPECT_EQ(combo.Text(), QString());
}

TEST(DateCombo, AcceptsDatesFromTheYear100To9999) {
  DateCombo combo;
  for (const auto& text : {u"01-01-0100"_s, u"31-12-9999"_s, u"1/3/2025"_s, u"01.03.2025"_s}) {
    combo.SetText(text);
    EXPECT_TRUE(combo.HoldsDate()) << text.toStdString();
  }
  for (const auto& text : {u"31-12-0099"_s, u"29-02-2025"_s, u"morgen"_s, u"2025-03-01"_s}) {
    combo.SetText(text);
    EXPECT_FALSE(combo.HoldsDate()) << text.toStdString();
    EXPECT_EQ(combo.Text(), text);
  }
}

TEST(DateCombo, WritesADateWithTwoDigitsForDayAndMonthAndFourForTheYear) {
  DateCombo combo;
  combo.SetDate(QDate(100, 1, 2));
  EXPECT_EQ(combo.Text(), u"02-01-0100"_s);
  EXPECT_EQ(combo.Date(), QDate(100, 1, 2));
}

TEST(DateCombo, SignalsEveryChangeByUserOrProgram) {
  DateCombo combo;
  const QSignalSpy changed(&combo, &QLineEdit::textChanged);
  combo.SetText(u"01-03-2025"_s);
  combo.SetText(u"01-03-2025"_s);
  EXPECT_EQ(changed.count(), 1);
  QTest::keyClick(&combo, Qt::Key_Backspace);
  EXPECT_EQ(changed.count(), 2);
}

TEST(DateCombo, LosingTheFocusWritesTheCompleteDate) {
  DateCombo combo;
  combo.setText(u"1-3-2025"_s);
  QFocusEvent leaving(QEvent::FocusOut, Qt::TabFocusReason);
  QApplication::sendEvent(&combo, &leaving);
  EXPECT_EQ(combo.Text(), u"01-03-2025"_s);
  combo.setText(u"1-3-"_s);
  QApplication::sendEvent(&combo, &leaving);
  EXPECT_EQ(combo.Text(), u"1-3-"_s);
}

TEST(DateCombo, ADayPickedInTheCalendarIsUsed) {
  DateCombo combo;
  combo.SetText(u"15-03-2025"_s);
  combo.show();
  QTest::keyClick(&combo, Qt::Key_Down, Qt::AltModifier);
  auto* calendar = combo.findChild<QCalendarWidget*>();
  ASSERT_NE(calendar, nullptr);
  EXPECT_EQ(calendar->selectedDate(), QDate(2025, 3, 15));
  EXPECT_EQ(calendar->minimumDate(), QDate(100, 1, 1));
  EXPECT_EQ(calendar->maximumDate(), QDate(9999, 12, 31));
  Q_EMIT calendar->clicked(QDate(2025, 4, 20));
  EXPECT_EQ(combo.Text(), u"20-04-2025"_s);
}

TEST(DateCombo, CalendarHasTheProgramsArrows) {
  DateCombo combo;
  combo.show();
  combo.OpenCalendar();
  for (const auto& [name, icon] :
       {std::pair{u"qt_calendar_prevmonth"_s, u"rew"_s}, {u"qt_calendar_nextmonth"_s, u"ffw"_s}}) {
    auto* arrow = combo.findChild<QToolButton*>(name);
    ASSERT_NE(arrow, nullptr);
    EXPECT_EQ(arrow->icon().name(), icon);
  }
}

TEST(DateCombo, LockedFieldOpensNoCalendar) {
  DateCombo combo;
  desktop::SetLocked(&combo, true);
  combo.show();
  QTest::keyClick(&combo, Qt::Key_F4);
  EXPECT_EQ(combo.findChild<controls::CalendarPopup*>(), nullptr);
  QTest::keyClicks(&combo, u"01"_s);
  EXPECT_EQ(combo.Text(), QString());
}

}  // namespace
