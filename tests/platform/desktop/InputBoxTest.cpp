// SPDX-License-Identifier: MIT
#include "platform/desktop/InputBox.h"

#include "platform/desktop/WaitPointer.h"

#include <QApplication>
#include <QDialog>
#include <QLabel>
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

TEST(InputBox, PromptIsPlainTextAndNamesTheField) {
  QTimer::singleShot(0, [] {
    const QWidget* box = QApplication::activeModalWidget();
    const auto* label = box->findChild<QLabel*>();
    EXPECT_EQ(label->textFormat(), Qt::PlainText);
    EXPECT_EQ(label->buddy(), box->findChild<QLineEdit*>());
    EXPECT_EQ(box->findChild<QLineEdit*>()->accessibleName(), u"Naam <van> het item"_s);
    QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape);
  });
  AskText(nullptr, u"Naam <van> het item"_s, u"Items"_s, QString());
}

TEST(InputBox, BelongsToItsOwnerAndShowsTheArrowPointer) {
  QWidget owner;
  const desktop::WaitPointer wait;
  QTimer::singleShot(0, [&owner] {
    EXPECT_EQ(QApplication::activeModalWidget()->parentWidget(), &owner);
    EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::ArrowCursor);
    QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape);
  });
  AskText(&owner, u"?"_s, u"Items"_s, QString());
  EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
}

TEST(InputBox, WithoutAnAnswerLeftItIsCancelledAndTheNewestScriptIsUsed) {
  InputBoxScript outer;
  outer.Type(u"buiten"_s);
  {
    InputBoxScript inner;
    EXPECT_EQ(AskText(nullptr, u"?"_s, u"Items"_s, u"1"_s), std::nullopt);
    EXPECT_EQ(inner.Shown().size(), 1U);
  }
  EXPECT_EQ(AskText(nullptr, u"?"_s, u"Items"_s, u"1"_s), u"buiten"_s);
}

}  // namespace
