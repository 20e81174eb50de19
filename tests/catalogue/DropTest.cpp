// SPDX-License-Identifier: MIT
// Audio files dropped on the lists, with the events that a desktop sends.
#include "tests/support/Drop.h"

#include "catalogue/frmItemPingles.h"
#include "catalogue/frmItemSpots.h"
#include "catalogue/frmItems.h"
#include "data/forms/DroppedAudio.h"
#include "platform/controls/ListBox.h"
#include "platform/runtime/HostPath.h"
#include "tests/catalogue/CatalogueTest.h"

#include <QDragEnterEvent>
#include <QLineEdit>
#include <QMimeData>

using namespace Qt::StringLiterals;
using testing_support::DropFilesOn;

namespace {

class ListDrop : public CatalogueTest {
 protected:
  QString HostFile(const QString& name) { return runtime::HostPath(AudioFile(name)); }
};

}  // namespace

TEST_F(ListDrop, OneFileOpensTheEditorOfANewSpotWithIt) {
  frmItemSpots form(nullptr);
  Open(form);
  QString handed;
  inTheEditor_ = [&] { handed = TakeDroppedAudio(); };
  const QString file = HostFile(u"kerst.wav"_s);
  EXPECT_TRUE(DropFilesOn(List(form), {file}));
  EXPECT_EQ(visits_, QStringList{u"ItemSpotsDetail NIEUW"_s});
  EXPECT_EQ(handed, file);
}

TEST_F(ListDrop, TheListShowsTheNewRecordAfterwards) {
  frmItemPingles form(nullptr);
  Open(form);
  inTheEditor_ = [&] { AddPingle(1, u"slot"_s); };
  EXPECT_TRUE(DropFilesOn(List(form), {HostFile(u"slot.MP3"_s)}));
  EXPECT_EQ(visits_, QStringList{u"ItemPinglesDetail NIEUW"_s});
  EXPECT_EQ(Lines(form), QStringList{u"slot"_s});
}

TEST_F(ListDrop, SeveralFilesArePassedOnInTheirOrder) {
  frmItemSpots form(nullptr);
  Open(form);
  QStringList handed;
  inTheEditor_ = [&] {
    while (DroppedAudioLeft() > 0)
      handed += TakeDroppedAudio();
  };
  const QStringList files{HostFile(u"b.wav"_s), HostFile(u"a.mp3"_s), HostFile(u"c.WAV"_s)};
  EXPECT_TRUE(DropFilesOn(Child<QLineEdit>(form, u"txtZoek"_s), files));
  EXPECT_EQ(handed, files);
  EXPECT_EQ(visits_.size(), 1);
  EXPECT_EQ(Child<QLineEdit>(form, u"txtZoek"_s).text(), QString());
}

TEST_F(ListDrop, UnusedFilesAreDiscardedAfterTheEditor) {
  frmItemSpots form(nullptr);
  Open(form);
  DropFilesOn(List(form), {HostFile(u"a.wav"_s), HostFile(u"b.wav"_s)});
  EXPECT_EQ(visits_.size(), 1);
  EXPECT_EQ(DroppedAudioLeft(), 0);
}

TEST_F(ListDrop, OtherFilesAreRefusedByNameAndAudioIsAccepted) {
  frmItemSpots form(nullptr);
  Open(form);
  QStringList handed;
  inTheEditor_ = [&] { handed += TakeDroppedAudio(); };
  const QString sound = HostFile(u"a.wav"_s);
  const QString text = HostFile(u"lijst.txt"_s);
  DropFilesOn(List(form), {text, sound, station_.AudioFolder()});
  ASSERT_EQ(boxes_.Shown().size(), 1U);
  EXPECT_EQ(boxes_.Last().text,
            u"U kunt hier geluidsbestanden van deze computer neerzetten: Mpeg-3 (*.MP3) en Wave (*.WAV).\r\n"
            u"Niet overgenomen:\r\n'%1'\r\n'%2'"_s.arg(text, station_.AudioFolder()));
  EXPECT_EQ(handed, QStringList{sound});
}

TEST_F(ListDrop, OnlyRefusedFilesOpenNoEditor) {
  frmItemPingles form(nullptr);
  Open(form);
  DropFilesOn(List(form), {HostFile(u"lijst.txt"_s)});
  EXPECT_EQ(boxes_.Shown().size(), 1U);
  EXPECT_EQ(visits_, QStringList());
}

TEST_F(ListDrop, TheListOfItemsAcceptsNoFiles) {
  frmItems form(nullptr);
  Open(form);
  EXPECT_FALSE(DropFilesOn(List(form), {HostFile(u"a.wav"_s)}));
  EXPECT_EQ(visits_, QStringList());
}

// A list below a modal window accepts no drops.
TEST_F(ListDrop, AListBelowAnotherWindowAcceptsNoFiles) {
  frmItemSpots form(nullptr);
  Open(form);
  frmItems above(&form);
  Open(above);
  EXPECT_FALSE(DropFilesOn(List(form), {HostFile(u"a.wav"_s)}));
  EXPECT_EQ(visits_, QStringList());
}

TEST_F(ListDrop, TheListIsHighlightedWhileFilesAreDraggedOverIt) {
  frmItemSpots form(nullptr);
  Open(form);
  QMimeData files;
  files.setUrls({QUrl::fromLocalFile(HostFile(u"a.wav"_s))});
  const auto look = [&] { return List(form).viewport()->grab().toImage(); };
  const QImage before = look();
  QDragEnterEvent enter({10, 10}, Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(List(form).viewport(), &enter);
  EXPECT_TRUE(List(form).IsDropTarget());
  EXPECT_NE(look(), before);
  QDragLeaveEvent leave;
  QApplication::sendEvent(List(form).viewport(), &leave);
  EXPECT_FALSE(List(form).IsDropTarget());
  EXPECT_EQ(look(), before);
  DropFilesOn(List(form), {HostFile(u"a.wav"_s)});
  EXPECT_FALSE(List(form).IsDropTarget());
}
