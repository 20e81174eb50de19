// SPDX-License-Identifier: MIT
#include "platform/desktop/FileDrop.h"

#include "tests/support/Drop.h"

#include <QCoreApplication>
#include <QDialog>
#include <QDropEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QSignalSpy>
#include <QTextEdit>
#include <QUrl>
#include <QVBoxLayout>

#include <gtest/gtest.h>

namespace {

using namespace Qt::StringLiterals;
using desktop::FileDrop;
using testing_support::DropFilesOn;
using testing_support::DropOn;

// A window with a text field, some room without controls, and a text box in a box of its own.
class WindowWithDrops : public testing::Test {
 protected:
  WindowWithDrops()
      : field(new QLineEdit), notes(new QTextEdit), drop((Fill(), &window)), dropped(&drop, &FileDrop::dropped) {
    window.resize(400, 500);
    window.show();
  }

  QStringList LastDropped() const { return dropped.isEmpty() ? QStringList() : dropped.last().first().toStringList(); }

  QWidget window;
  QLineEdit* field;
  QTextEdit* notes;
  FileDrop drop;
  QSignalSpy dropped;

 private:
  void Fill() {
    auto* column = new QVBoxLayout(&window);
    auto* inner = new QWidget;
    auto* innerColumn = new QVBoxLayout(inner);
    innerColumn->addWidget(notes);
    column->addWidget(field);
    column->addSpacing(300);
    column->addWidget(inner);
  }
};

TEST_F(WindowWithDrops, AcceptsFilesInTheirOrder) {
  const QStringList files{u"/audio/twee.wav"_s, u"/audio/een.mp3"_s, u"/audio/ré clame #1 50%.wav"_s};
  EXPECT_TRUE(DropFilesOn(window, files));
  ASSERT_EQ(dropped.count(), 1);
  EXPECT_EQ(LastDropped(), files);
}

TEST_F(WindowWithDrops, AcceptsFilesOnItsFieldsWhoseTextsStay) {
  field->setText(u"naam"_s);
  notes->setPlainText(u"opmerking"_s);
  for (QWidget* target : {static_cast<QWidget*>(field), notes->viewport()}) {
    EXPECT_TRUE(DropFilesOn(*target, {u"/audio/een.wav"_s}));
    EXPECT_EQ(LastDropped(), QStringList{u"/audio/een.wav"_s});
  }
  EXPECT_EQ(dropped.count(), 2);
  EXPECT_EQ(field->text(), u"naam"_s);
  EXPECT_EQ(notes->toPlainText(), u"opmerking"_s);
}

TEST_F(WindowWithDrops, AFileElsewhereIsGivenByItsUrl) {
  QMimeData data;
  data.setUrls({QUrl(u"smb://studio/audio/een.wav"_s), QUrl::fromLocalFile(u"/audio/twee.wav"_s)});
  EXPECT_TRUE(DropOn(window, data));
  EXPECT_EQ(LastDropped(), (QStringList{u"smb://studio/audio/een.wav"_s, u"/audio/twee.wav"_s}));
}

TEST_F(WindowWithDrops, DraggedTextStillGoesToTheField) {
  QMimeData data;
  data.setText(u"Bakker"_s);
  EXPECT_TRUE(DropOn(*field, data));
  EXPECT_EQ(field->text(), u"Bakker"_s);
  EXPECT_FALSE(DropOn(window, data));
  EXPECT_EQ(dropped.count(), 0);
}

TEST_F(WindowWithDrops, AcceptsNothingWhileAnotherWindowIsModal) {
  QDialog question;
  question.setModal(true);
  question.show();
  EXPECT_FALSE(DropFilesOn(window, {u"/audio/een.wav"_s}));
  EXPECT_FALSE(DropFilesOn(*field, {u"/audio/een.wav"_s}));
  EXPECT_EQ(field->text(), QString());
  EXPECT_EQ(dropped.count(), 0);
  question.close();
  EXPECT_TRUE(DropFilesOn(window, {u"/audio/een.wav"_s}));
}

TEST(FileDropInADialog, AcceptsFilesWhileItIsModalItself) {
  QDialog dialog;
  const FileDrop drop(&dialog);
  QSignalSpy dropped(&drop, &FileDrop::dropped);
  dialog.setModal(true);
  dialog.show();
  EXPECT_TRUE(DropFilesOn(dialog, {u"/audio/een.wav"_s}));
  EXPECT_EQ(dropped.count(), 1);
}

// The source of a drag that moves would delete its files. The signal must not run within the drop: that program waits.
TEST_F(WindowWithDrops, CopiesAndSignalsAfterTheDrop) {
  QMimeData data;
  data.setUrls({QUrl::fromLocalFile(u"/audio/een.wav"_s)});
  QDragEnterEvent enter(QPoint(10, 100), Qt::MoveAction | Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(&window, &enter);
  QDropEvent event(QPointF(10, 100), Qt::MoveAction | Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  event.setDropAction(Qt::MoveAction);
  event.ignore();
  QCoreApplication::sendEvent(&window, &event);
  EXPECT_TRUE(event.isAccepted());
  EXPECT_EQ(event.dropAction(), Qt::CopyAction);
  EXPECT_EQ(dropped.count(), 0);
  QCoreApplication::processEvents();
  EXPECT_EQ(dropped.count(), 1);
}

}  // namespace
