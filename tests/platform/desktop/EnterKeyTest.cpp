// SPDX-License-Identifier: MIT
// Enter in a dialog: in a field, on buttons, on a danger button.
#include "platform/desktop/EnterKey.h"

#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>
#include <QVBoxLayout>

#include <gtest/gtest.h>

using namespace desktop;
using namespace Qt::StringLiterals;

namespace {

class EnterInADialog : public testing::Test {
 protected:
  EnterInADialog() {
    auto* column = new QVBoxLayout(&dialog);
    for (QWidget* widget : std::initializer_list<QWidget*>{&field, &check, &tool, &cancel, &remove, &ok})
      column->addWidget(widget);
    for (QPushButton* button : {&cancel, &remove})
      button->setAutoDefault(false);
    ok.setDefault(true);
    remove.setProperty("danger", true);
    QObject::connect(&ok, &QPushButton::clicked, &dialog, [this] { done += u"ok"_s; });
    QObject::connect(&cancel, &QPushButton::clicked, &dialog, [this] { done += u"cancel"_s; });
    QObject::connect(&remove, &QPushButton::clicked, &dialog, [this] { done += u"remove"_s; });
    QObject::connect(&tool, &QToolButton::clicked, &dialog, [this] { done += u"tool"_s; });
    dialog.show();
  }

  QStringList DoneByEnterOn(QWidget& widget, Qt::Key key = Qt::Key_Return) {
    done.clear();
    widget.setFocus();
    QTest::keyClick(&widget, key);
    return done;
  }

  const EnterKey enterKey{*qApp};
  QDialog dialog;
  QLineEdit field;
  QCheckBox check;
  QToolButton tool;
  QPushButton cancel, remove, ok;
  QStringList done;
};

}  // namespace

TEST_F(EnterInADialog, OnAFieldOrCheckBoxPressesTheDefaultButton) {
  EXPECT_EQ(DoneByEnterOn(field), QStringList{u"ok"_s});
  EXPECT_EQ(DoneByEnterOn(check), QStringList{u"ok"_s});
  EXPECT_FALSE(check.isChecked());
}

TEST_F(EnterInADialog, OnAButtonPressesIt) {
  EXPECT_EQ(DoneByEnterOn(cancel), QStringList{u"cancel"_s});
  EXPECT_EQ(DoneByEnterOn(cancel, Qt::Key_Enter), QStringList{u"cancel"_s});
  EXPECT_EQ(DoneByEnterOn(tool), QStringList{u"tool"_s});
  EXPECT_EQ(DoneByEnterOn(ok), QStringList{u"ok"_s});
}

TEST_F(EnterInADialog, OnADangerButtonPressesTheDefaultButton) {
  EXPECT_EQ(DoneByEnterOn(remove), QStringList{u"ok"_s});
}

TEST_F(EnterInADialog, OnADisabledButtonPressesNothing) {
  cancel.setEnabled(false);
  QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
  QApplication::sendEvent(&cancel, &press);
  EXPECT_FALSE(done.contains(u"cancel"_s));
}

TEST_F(EnterInADialog, HeldDownPressesOnce) {
  cancel.setFocus();
  for (const bool isRepeat : {false, true, true}) {
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, {}, isRepeat);
    QApplication::sendEvent(&cancel, &press);
  }
  EXPECT_EQ(done, QStringList{u"cancel"_s});
}
