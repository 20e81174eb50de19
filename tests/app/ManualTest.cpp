// SPDX-License-Identifier: MIT
// The window with the manual: contents, search, and its use while modal windows are open.
#include "app/ManualOpener.h"
#include "app/ManualSections.h"
#include "app/frmHandleiding.h"
#include "platform/controls/ListBox.h"
#include "platform/desktop/MessageBox.h"
#include "tests/app/MainTest.h"
#include "tests/support/ModalDriver.h"
#include "tests/support/Ui.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTimer>
#include <QWindow>

using namespace Qt::StringLiterals;
using controls::ListBox;
using testing_support::Child;
using testing_support::ModalDriver;

namespace {

class Manual : public testing::Test {
 protected:
  Manual() {
    form_.Form_Load();
    form_.show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&form_));
  }
  ListBox& Contents() const { return Child<ListBox>(form_, u"lstInhoud"_s); }
  QTextBrowser& Text() const { return Child<QTextBrowser>(form_, u"txtHandleiding"_s); }
  QString Found() const { return Child<QLabel>(form_, u"lblGevonden"_s).text(); }
  // The first line of text that is in sight.
  QString TopLine() const { return Text().cursorForPosition({40, 24}).block().text(); }

  frmHandleiding form_{nullptr};
};

frmHandleiding* OpenManual() {
  for (QWidget* window : QApplication::topLevelWidgets()) {
    auto* manual = qobject_cast<frmHandleiding*>(window);
    if (manual != nullptr && manual->isVisible()) return manual;
  }
  return nullptr;
}

// Clicks through the window system, which ignores blocked windows; returns whether the search field got the focus.
bool AcceptsClick(frmHandleiding& manual) {
  auto& field = Child<QLineEdit>(manual, u"txtZoek"_s);
  Child<QTextBrowser>(manual, u"txtHandleiding"_s).setFocus();
  manual.activateWindow();
  QTest::mouseClick(manual.windowHandle(), Qt::LeftButton, {}, field.mapTo(&manual, field.rect().center()));
  QCoreApplication::processEvents();
  return manual.focusWidget() == &field;
}

}  // namespace

TEST_F(Manual, ContentsHaveEverySectionAndShowIt) {
  QStringList headings;
  for (int line = 0; line < Contents().ListCount(); ++line)
    headings += Contents().Text(line).trimmed();
  for (const QString& section : ManualSections())
    EXPECT_TRUE(headings.contains(section)) << section.toStdString();
  EXPECT_GT(headings.size(), 15);
  form_.GoTo(u"Opruimen"_s);
  EXPECT_EQ(TopLine(), u"Opruimen"_s);
  Contents().SetListIndex(static_cast<int>(headings.indexOf(u"De lijsten"_s)));
  EXPECT_EQ(TopLine(), u"De lijsten"_s);
}

TEST_F(Manual, SearchGoesFromPlaceToPlace) {
  auto& field = Child<QLineEdit>(form_, u"txtZoek"_s);
  EXPECT_EQ(QApplication::focusWidget(), &field);
  QTest::keyClicks(&field, u"golfvorm"_s);
  const qsizetype count = Text().toPlainText().count(u"golfvorm"_s, Qt::CaseInsensitive);
  ASSERT_GT(count, 2);
  EXPECT_EQ(Found(), u"1 van %1"_s.arg(count));
  EXPECT_EQ(Text().textCursor().selectedText().toLower(), u"golfvorm"_s);
  EXPECT_TRUE(Text().rect().contains(Text().cursorRect().center()));
  QTest::keyClick(&field, Qt::Key_Return);
  EXPECT_EQ(Found(), u"2 van %1"_s.arg(count));
  Child<QPushButton>(form_, u"cmdVorige"_s).click();
  Child<QPushButton>(form_, u"cmdVorige"_s).click();
  EXPECT_EQ(Found(), u"%1 van %1"_s.arg(count));
  EXPECT_EQ(Text().extraSelections().size(), count);
  field.clear();
  QTest::keyClicks(&field, u"xyzzy"_s);
  EXPECT_EQ(Found(), u"niet gevonden"_s);
  EXPECT_FALSE(Text().textCursor().hasSelection());
  EXPECT_TRUE(form_.isVisible());
}

TEST_F(MainTest, ManualIsUsableWhileModalWindowsAreOpen) {
  frmMain main;
  Load(main, u"Radio Proef"_s);
  ModalDriver driver;
  bool inDialog = false;
  bool inBox = false;
  bool afterBox = false;
  QString shown;
  driver.OnNext(u"frmVersie"_s, [&](QDialog& window) {
    QTest::keyClick(&Child<QPushButton>(window, u"cmdSluiten"_s), Qt::Key_F1);
    ASSERT_NE(OpenManual(), nullptr);
    inDialog = AcceptsClick(*OpenManual());
    QTimer::singleShot(0, [&] {
      inBox = AcceptsClick(*OpenManual());
      QApplication::activeModalWidget()->close();
    });
    desktop::ShowMessageBox(&window, u"Een melding"_s, 64, u"Items"_s);
    afterBox = AcceptsClick(*OpenManual());
    Child<QPushButton>(window, u"cmdSluiten"_s).click();
  });
  Action(main, u"actVersie"_s).trigger();
  EXPECT_TRUE(inDialog);
  EXPECT_TRUE(inBox);
  EXPECT_TRUE(afterBox);
  ASSERT_NE(OpenManual(), nullptr);
  EXPECT_TRUE(AcceptsClick(*OpenManual()));
}

TEST_F(MainTest, ManualOpensOnceAtTheSectionOfTheWindowInUse) {
  frmMain main;
  Load(main, u"Radio Proef"_s);
  ModalDriver driver;
  driver.OnNext(u"frmReservekopieen"_s, [&](QDialog& window) {
    window.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    QTest::keyClick(&window, Qt::Key_F1);
    ASSERT_NE(OpenManual(), nullptr);
    const auto& contents = Child<ListBox>(*OpenManual(), u"lstInhoud"_s);
    EXPECT_EQ(contents.Text(contents.ListIndex()).trimmed(), u"Reservekopieën"_s);
    Child<QPushButton>(window, u"cmdSluiten"_s).click();
  });
  Action(main, u"actReservekopieen"_s).trigger();
  frmHandleiding* manual = OpenManual();
  Action(main, u"actHandleiding"_s).trigger();
  EXPECT_EQ(OpenManual(), manual);
  EXPECT_FALSE(manual->testAttribute(Qt::WA_QuitOnClose)) << "the program would not end with its main window";
}
