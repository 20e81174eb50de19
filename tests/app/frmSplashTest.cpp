// SPDX-License-Identifier: MIT
#include "app/frmSplash.h"

#include "app/Version.h"
#include "tests/support/Ui.h"

#include <QLabel>
#include <QRegularExpression>
#include <QTest>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using testing_support::Child;

TEST(frmSplash, ShowsTheVersionInThreeNumbers) {
  const frmSplash splash;
  const QString text = Child<QLabel>(splash, u"lblVersie"_s).text();
  EXPECT_TRUE(QRegularExpression(u"^Versie \\d+\\.\\d+\\.\\d+$"_s).match(text).hasMatch()) << text.toStdString();
  EXPECT_EQ(text, u"Versie "_s + Version());
}

TEST(frmSplash, AnyKeyClosesIt) {
  for (const int key : {Qt::Key_Escape, Qt::Key_A, Qt::Key_F5}) {
    frmSplash splash;
    splash.show();
    QTest::keyClick(&splash, static_cast<Qt::Key>(key));
    EXPECT_FALSE(splash.isVisible());
  }
}

TEST(frmSplash, ShowsTheStepsOfTheStartUp) {
  frmSplash splash;
  splash.show();
  splash.ShowStep(u"Zender kiezen ..."_s);
  EXPECT_EQ(Child<QLabel>(splash, u"lblStap"_s).text(), u"Zender kiezen ..."_s);
}
