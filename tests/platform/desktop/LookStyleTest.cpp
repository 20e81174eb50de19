// SPDX-License-Identifier: MIT
#include "platform/desktop/LookStyle.h"

#include "platform/desktop/Icons.h"
#include "platform/desktop/Lock.h"
#include "tests/platform/desktop/Look.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QGridLayout>
#include <QGroupBox>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QStyleOption>
#include <QVBoxLayout>

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using namespace Qt::StringLiterals;
using namespace look_test;

QColor Middle(const QImage& image) {
  return image.pixelColor(image.width() / 2, 4);
}

TEST_F(Look, HeightsFollowTheFont) {
  for (const int size : {10, 20}) {
    QWidget window;
    window.setFont(QFont(QApplication::font().family(), size));
    const int height = std::max(28, QFontMetrics(window.font()).height() + 12);
    QLineEdit edit(&window);
    QComboBox combo(&window);
    QPushButton button(u"Nieuw"_s, &window);
    EXPECT_EQ(edit.sizeHint().height(), height);
    EXPECT_EQ(combo.sizeHint().height(), height);
    EXPECT_EQ(button.sizeHint().height(), height);
  }
}

TEST_F(Look, ButtonsAreAtLeast88Wide) {
  EXPECT_EQ(QPushButton(u"OK"_s).sizeHint().width(), 88);
  EXPECT_GT(QPushButton(u"Een veel langere tekst dan gewoonlijk"_s).sizeHint().width(), 200);
}

TEST_F(Look, OnlyTheDefaultButtonIsFilled) {
  QDialog dialog;
  QPushButton ok(u"OK"_s, &dialog);
  ok.setDefault(true);
  QPushButton cancel(u"Annuleren"_s, &dialog);
  cancel.setAutoDefault(false);
  EXPECT_EQ(Middle(Painted(ok)), Colours().accent);
  EXPECT_EQ(Middle(Painted(cancel)), Colours().face);
  ok.setProperty("quiet", true);
  EXPECT_EQ(Middle(Painted(ok)), Colours().face);
}

TEST_F(Look, DangerButtonIsRedUnlessDisabled) {
  QPushButton button(u"Opruimen"_s);
  button.setProperty("danger", true);
  EXPECT_EQ(Middle(Painted(button)), Colours().danger);
  button.setEnabled(false);
  EXPECT_NE(Middle(Painted(button)), Colours().danger);
}

TEST_F(Look, LockedFieldsLookDifferent) {
  QLineEdit edit;
  EXPECT_EQ(Middle(Painted(edit)), QApplication::palette().color(QPalette::Base));
  desktop::SetLocked(&edit, true);
  EXPECT_EQ(Middle(Painted(edit)), QApplication::palette().color(QPalette::Button));
  QComboBox combo;
  EXPECT_EQ(Middle(Painted(combo)), QApplication::palette().color(QPalette::Base));
  desktop::SetLocked(&combo, true);
  EXPECT_EQ(Middle(Painted(combo)), QApplication::palette().color(QPalette::Button));
}

TEST_F(Look, FocusedFieldHasAnAccentBorder) {
  QWidget window;
  auto* edit = new QLineEdit(&window);
  window.show();
  QApplication::setActiveWindow(&window);
  edit->setFocus();
  const QImage image = Painted(*edit);
  EXPECT_EQ(image.pixelColor(image.width() / 2, 0), Colours().accent);
  EXPECT_EQ(image.pixelColor(image.width() / 2, 1), Colours().accent);
}

// Also above and below the text, where there is little room.
TEST_F(Look, FocusedOptionHasACompleteAccentRing) {
  QWidget window;
  auto* box = new QCheckBox(u"Aktief"_s, &window);
  window.show();
  QApplication::setActiveWindow(&window);
  box->setFocus(Qt::TabFocusReason);
  const QImage image = Painted(*box);
  const int text = image.width() - 20;
  int ring = 0;
  for (int y = 0; y < image.height(); ++y)
    ring += image.pixelColor(text, y) == Colours().accent ? 1 : 0;
  EXPECT_EQ(ring, 4);  // two above, two below
}

TEST_F(Look, PaintsInTheColoursOfTheNewPalette) {
  QDialog dialog;
  QPushButton ok(u"OK"_s, &dialog);
  ok.setDefault(true);
  Painted(ok);
  QApplication::setPalette(desktop::DarkPalette());
  QCoreApplication::processEvents();
  EXPECT_EQ(Middle(Painted(ok)), Colours().accent);
  EXPECT_TRUE(desktop::IsDark(ok.palette()));
}

TEST_F(Look, GroupsCardIsBelowItsTitle) {
  QGroupBox group(u"Geldigheid"_s);
  auto* layout = new QVBoxLayout(&group);
  auto* edit = new QLineEdit;
  layout->addWidget(edit);
  const QImage image = Painted(group);
  layout->activate();
  EXPECT_EQ(image.pixelColor(image.width() / 2, image.height() - 4), Colours().card);
  EXPECT_GE(edit->geometry().top(), QFontMetrics(group.font()).height() + 12);
  EXPECT_EQ(edit->geometry().left(), 12);
}

TEST_F(Look, MarginsComeFromTheStyle) {
  QDialog dialog;
  auto* layout = new QVBoxLayout(&dialog);
  auto* inner = new QWidget;
  auto* innerLayout = new QVBoxLayout(inner);
  layout->addWidget(inner);
  EXPECT_EQ(layout->contentsMargins(), QMargins(16, 16, 16, 16));
  EXPECT_EQ(innerLayout->contentsMargins(), QMargins(0, 0, 0, 0));
  EXPECT_EQ(layout->spacing(), 8);
}

TEST_F(Look, LayoutInAGridWithUnequalSpacingsHasTheUsualGap) {
  QWidget window;
  auto* grid = new QGridLayout(&window);
  grid->setHorizontalSpacing(16);
  auto* column = new QVBoxLayout;
  auto* upper = new QLineEdit;
  auto* lower = new QLineEdit;
  column->addWidget(upper);
  column->addWidget(lower);
  grid->addLayout(column, 0, 0);
  window.resize(window.sizeHint());
  grid->activate();
  EXPECT_EQ(lower->y() - upper->geometry().bottom() - 1, 8);
}

TEST_F(Look, CheckedMarkIsFilledWithTheAccent) {
  QCheckBox box(u"Aktief"_s);
  QRadioButton radio(u"Online"_s);
  for (QAbstractButton* button : {static_cast<QAbstractButton*>(&box), static_cast<QAbstractButton*>(&radio)}) {
    const QImage empty = Painted(*button);
    EXPECT_EQ(empty.pixelColor(2, empty.height() / 2), QApplication::palette().color(QPalette::Base));
    button->setChecked(true);
    const QImage chosen = Painted(*button);
    EXPECT_EQ(chosen.pixelColor(2, chosen.height() / 2), Colours().accent);
    button->setEnabled(false);
    EXPECT_NE(Painted(*button).pixelColor(2, chosen.height() / 2), Colours().accent);
  }
}

// At scale 2 there is more detail, not the same pixels enlarged.
TEST_F(Look, IsCrispAt200Percent) {
  QCheckBox box(u"Aktief"_s);
  box.setChecked(true);
  const QImage once = Painted(box);
  const QImage twice = Painted(box, 2);
  ASSERT_EQ(twice.size(), once.size() * 2);
  const QImage enlarged = once.scaled(twice.size());
  int differing = 0;
  for (int y = 0; y < twice.height(); ++y)
    for (int x = 0; x < twice.width(); ++x)
      differing += twice.pixel(x, y) != enlarged.pixel(x, y) ? 1 : 0;
  EXPECT_GT(differing, 100);
}

TEST_F(Look, ProgressBarFillsItsShare) {
  QProgressBar bar;
  bar.setTextVisible(false);
  bar.setRange(0, 100);
  bar.setValue(50);
  const QImage image = Painted(bar);
  const int y = image.height() / 2;
  EXPECT_EQ(image.pixelColor(image.width() / 4, y), Colours().accent);
  EXPECT_EQ(image.pixelColor(image.width() * 3 / 4, y), Colours().line);
}

TEST_F(Look, QtsDialogsShowTheProgramsIcons) {
  for (const QStyle::StandardPixmap icon :
       {QStyle::SP_ArrowBack, QStyle::SP_ArrowForward, QStyle::SP_FileDialogToParent, QStyle::SP_FileDialogNewFolder,
        QStyle::SP_FileDialogListView, QStyle::SP_FileDialogDetailedView, QStyle::SP_ComputerIcon,
        QStyle::SP_DriveHDIcon, QStyle::SP_DirIcon, QStyle::SP_DirHomeIcon, QStyle::SP_FileIcon}) {
    const QString name = QApplication::style()->standardIcon(icon).name();
    EXPECT_TRUE(desktop::IconNames().contains(name)) << icon;
  }
}

TEST_F(Look, ColumnTitlesAreFlatAboveAHairline) {
  QImage image(40, 24, QImage::Format_ARGB32_Premultiplied);
  QPainter painter(&image);
  QStyleOptionHeader option;
  option.rect = image.rect();
  option.palette = QApplication::palette();
  QApplication::style()->drawControl(QStyle::CE_HeaderSection, &option, &painter);
  for (int y = 0; y < 23; ++y)
    EXPECT_EQ(image.pixelColor(20, y), option.palette.color(QPalette::AlternateBase)) << y;
  EXPECT_EQ(image.pixelColor(20, 23), Colours().line);
}

// A combo with a text, painted at the width for a short one.
QImage PaintedCombo(const QString& text) {
  QComboBox combo;
  combo.addItem(text);
  combo.setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  combo.setMinimumContentsLength(8);
  return Painted(combo);
}

TEST_F(Look, SelectionThatDoesNotFitIsElided) {
  const QString text = u"Opener avond, versie met koor en pauken voor de feestdagen"_s;
  const QImage cut = PaintedCombo(text);
  bool ellipsis = false;
  for (qsizetype length = 1; length < text.size() && !ellipsis; ++length)
    ellipsis = cut == PaintedCombo(text.left(length) + QChar(0x2026));
  EXPECT_TRUE(ellipsis);
}

}  // namespace
