// SPDX-License-Identifier: MIT
#include "platform/desktop/InputBox.h"

#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

namespace {

using namespace Qt::StringLiterals;
using desktop::AskText;
using desktop::InputBoxScript;

TEST(InputBox, ReturnsTheTypedText) {
  InputBoxScript script;
  script.Type(u"2500"_s);
  EXPECT_EQ(AskText(nullptr, u"Geef een numerische waarde ..."_s, u"Items"_s, u"0"_s), u"2500"_s);
  ASSERT_EQ(script.Shown().size(), 1U);
  EXPECT_EQ(script.Shown()[0].title, u"Items"_s);
  EXPECT_EQ(script.Shown()[0].prompt, u"Geef een numerische waarde ..."_s);
  EXPECT_EQ(script.Shown()[0].defaultText, u"0"_s);
}

TEST(InputBox, EmptyTextIsAnAnswerAndCancelIsNone) {
  InputBoxScript script;
  script.Type(QString());
  script.Cancel();
  EXPECT_EQ(AskText(nullptr, u"?"_s, u"Items"_s, u"1"_s), QString());
  EXPECT_FALSE(AskText(nullptr, u"?"_s, u"Items"_s, u"1"_s).has_value());
}

TEST(InputBox, TypingReplacesTheDefaultTextAndEnterAccepts) {
  QTimer::singleShot(0, [] {
    auto* line = QApplication::activeModalWidget()->findChild<QLineEdit*>();
    QTest::keyClicks(line, u"75"_s);
    QTest::keyClick(line, Qt::Key_Return);
  });
  EXPECT_EQ(AskText(nullptr, u"?"_s, u"Items"_s, u"2480"_s), u"75"_s);
}

TEST(InputBox, EscCancels) {
  QTimer::singleShot(0, [] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape); });
  EXPECT_FALSE(AskText(nullptr, u"?"_s, u"Items"_s, u"2480"_s).has_value());
}

}  // namespace
