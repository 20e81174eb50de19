// SPDX-License-Identifier: MIT
#include "platform/desktop/FileChooser.h"

#include "platform/desktop/FolderMemory.h"

#include <QApplication>
#include <QComboBox>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QHeaderView>
#include <QLineEdit>
#include <QScreen>
#include <QTemporaryDir>
#include <QTimer>
#include <QTreeView>

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

namespace {

using namespace Qt::StringLiterals;
using desktop::ChooseFolder;
using desktop::FileChooser;
using desktop::FileChooserScript;
using desktop::FolderMemory;

const QString kFilter = u"Mpeg-3 (*.MP3)|*.MP3|Wave bestanden (*.WAV) |*.WAV"_s;

TEST(FileChooser, CancelKeepsThePreviousChoice) {
  FileChooserScript script;
  script.Cancel();
  script.Choose(u"/audio/een.mp3"_s);
  script.Cancel();
  FileChooser chooser;
  EXPECT_EQ(chooser.ShowOpen(nullptr), QString());
  EXPECT_EQ(chooser.ShowOpen(nullptr), u"/audio/een.mp3"_s);
  EXPECT_EQ(chooser.ShowOpen(nullptr), u"/audio/een.mp3"_s);
  EXPECT_EQ(chooser.FileName(), u"/audio/een.mp3"_s);
}

TEST(FileChooser, OpensWithTitleAndFilterAtTheLastChoice) {
  FileChooserScript script;
  script.Choose(u"/audio/een.mp3"_s);
  FileChooser chooser;
  chooser.SetTitle(u"Info-spot kiezen"_s);
  chooser.SetFilter(kFilter);
  chooser.SetStartFolder(u"/begin"_s);
  chooser.ShowOpen(nullptr);
  chooser.ShowOpen(nullptr);
  ASSERT_EQ(script.Shown().size(), 2U);
  EXPECT_EQ(script.Shown()[0].title, u"Info-spot kiezen"_s);
  EXPECT_EQ(script.Shown()[0].filter, kFilter);
  EXPECT_EQ(script.Shown()[0].startFolder, u"/begin"_s);
  EXPECT_EQ(script.Shown()[1].startFolder, u"/audio"_s);
}

TEST(FileChooser, FiltersMatchNamesInEitherCase) {
  const QStringList expected{u"Mpeg-3 (*.MP3) (*.MP3 *.mp3)"_s, u"Wave bestanden (*.WAV) (*.WAV *.wav)"_s};
  EXPECT_EQ(desktop::NameFilters(kFilter), expected);
}

TEST(FileChooser, RealDialogReturnsTheChosenFile) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(u"spot.mp3"_s);
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.close();
  FileChooser chooser;
  chooser.SetTitle(u"Info-spot kiezen"_s);
  chooser.SetFilter(kFilter);
  chooser.SetStartFolder(folder.path());
  QTimer::singleShot(0, [&path] {
    auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(dialog->windowTitle(), u"Info-spot kiezen"_s);
    EXPECT_EQ(dialog->nameFilters(), desktop::NameFilters(kFilter));
    dialog->selectFile(path);
    QMetaObject::invokeMethod(dialog, "accept");
    if (dialog->isVisible()) dialog->reject();
  });
  EXPECT_EQ(chooser.ShowOpen(nullptr), path);
}

// Shows the real dialog, and calls `look` with it again and again until that closes it: the dialog reads the folder in
// the background.
void ShowDialog(FileChooser& chooser, const std::function<void(QFileDialog&)>& look) {
  QTimer timer;
  QObject::connect(&timer, &QTimer::timeout, [&look] {
    if (auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget())) look(*dialog);
  });
  timer.start(0);
  chooser.ShowOpen(nullptr);
}

// The first line of the dialog's list of files; invalid while there is none.
QModelIndex FirstLine(const QFileDialog& dialog) {
  const auto* files = dialog.findChild<QTreeView*>(u"treeView"_s);
  return files->model()->index(0, 0, files->rootIndex());
}

// The filter descriptions that the real dialog shows, the selected one first.
QStringList OfferedBy(FileChooser& chooser) {
  QStringList offered;
  chooser.SetFilter(kFilter);
  ShowDialog(chooser, [&offered](QFileDialog& dialog) {
    const auto* sorts = dialog.findChild<QComboBox*>(u"fileTypeCombo"_s);
    offered = {sorts->currentText()};
    for (int sort = 0; sort < sorts->count(); ++sort)
      offered += sorts->itemText(sort);
    dialog.reject();
  });
  return offered;
}

TEST(FileChooser, RealDialogShowsTheFilterDescriptions) {
  FileChooser chooser;
  EXPECT_EQ(OfferedBy(chooser), (QStringList{u"Mpeg-3 (*.MP3)"_s, u"Mpeg-3 (*.MP3)"_s, u"Wave bestanden (*.WAV)"_s}));
}

TEST(FileChooser, RealDialogCallsAFolderMap) {
  const QTemporaryDir folder;
  ASSERT_TRUE(QDir(folder.path()).mkdir(u"spots"_s));
  FileChooser chooser;
  chooser.SetStartFolder(folder.path());
  QString sort;
  ShowDialog(chooser, [&sort](QFileDialog& dialog) {
    constexpr int kSortColumn = 2;
    sort = FirstLine(dialog).siblingAtColumn(kSortColumn).data().toString();
    if (!sort.isEmpty()) dialog.reject();
  });
  EXPECT_EQ(sort, u"Map"_s);
}

// Whatever the locale of the desktop is; the tests run without one, where Qt writes KiB and month/day/year.
TEST(FileChooser, RealDialogShowsSizesAndDatesInDutch) {
  const QTemporaryDir folder;
  QFile file(folder.filePath(u"spot.wav"_s));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(QByteArray(1536, 'x'));
  ASSERT_TRUE(file.flush());
  const QDateTime moment(QDate(2025, 3, 11), QTime(14, 32, 7));
  ASSERT_TRUE(file.setFileTime(moment, QFileDevice::FileModificationTime));
  file.close();
  FileChooser chooser;
  chooser.SetStartFolder(folder.path());
  QStringList shown;
  ShowDialog(chooser, [&shown](QFileDialog& dialog) {
    const QModelIndex first = FirstLine(dialog);
    constexpr int kSizeColumn = 1;
    constexpr int kDateColumn = 3;
    if (first.data().toString() != u"spot.wav"_s) return;
    shown = {first.siblingAtColumn(kSizeColumn).data().toString(),
             first.siblingAtColumn(kDateColumn).data().toString()};
    if (!shown.at(1).isEmpty()) dialog.reject();
  });
  EXPECT_EQ(shown, (QStringList{u"1,5 kB"_s, u"11-03-2025 14:32"_s}));
}

TEST(FileChooser, NextDialogHasTheFilterOfTheLastChoice) {
  FileChooser chooser;
  {
    FileChooserScript script;
    script.Choose(u"/audio/een.Wav"_s);
    chooser.ShowOpen(nullptr);
  }
  EXPECT_EQ(OfferedBy(chooser).front(), u"Wave bestanden (*.WAV)"_s);
}

// Two runs of the program.
class ChooserFolders : public ::testing::Test {
 protected:
  QString Begin(const QString& kind, const QString& startFolder = {}) const {
    const FolderMemory memory(folder_.filePath(u"mappen.ini"_s));
    FileChooserScript script;
    FileChooser chooser;
    chooser.SetKind(kind);
    chooser.SetStartFolder(startFolder);
    chooser.ShowOpen(nullptr);
    return script.Shown().front().startFolder;
  }
  void Choose(const QString& kind, const QString& path) const {
    const FolderMemory memory(folder_.filePath(u"mappen.ini"_s));
    FileChooserScript script;
    script.Choose(path);
    FileChooser chooser;
    chooser.SetKind(kind);
    chooser.ShowOpen(nullptr);
  }
  QString Made(const QString& name) const {
    QDir(folder_.path()).mkdir(name);
    return folder_.filePath(name);
  }

  const QTemporaryDir folder_;
};

TEST_F(ChooserFolders, NextRunStartsInTheLastFolder) {
  const QString spots = Made(u"spots"_s);
  Choose(u"Item-spot"_s, spots + u"/een.mp3"_s);
  EXPECT_EQ(Begin(u"Item-spot"_s), spots);
}

TEST_F(ChooserFolders, EachKindHasItsOwnFolder) {
  Choose(u"Item-spot"_s, Made(u"spots"_s) + u"/een.mp3"_s);
  Choose(u"Item-pingle"_s, Made(u"jingles"_s) + u"/een.wav"_s);
  EXPECT_EQ(Begin(u"Item-spot"_s), folder_.filePath(u"spots"_s));
  EXPECT_EQ(Begin(u"Item-pingle"_s), folder_.filePath(u"jingles"_s));
  EXPECT_EQ(Begin(u"Overzicht"_s), QDir::homePath());
}

TEST_F(ChooserFolders, FolderSetByTheFormHasPrecedence) {
  Choose(u"Item-spot"_s, Made(u"spots"_s) + u"/een.mp3"_s);
  EXPECT_EQ(Begin(u"Item-spot"_s, u"/van/het/record"_s), u"/van/het/record"_s);
}

TEST_F(ChooserFolders, CancelAndMissingFolderAreIgnored) {
  const QString spots = Made(u"spots"_s);
  Choose(u"Item-spot"_s, spots + u"/een.mp3"_s);
  Choose(u"Item-spot"_s, QString());
  EXPECT_EQ(Begin(u"Item-spot"_s), spots);
  QDir(folder_.path()).rmdir(u"spots"_s);
  EXPECT_EQ(Begin(u"Item-spot"_s), QDir::homePath());
}

TEST_F(ChooserFolders, RealDialogOpensInTheFolder) {
  const QString spots = Made(u"spots"_s);
  Choose(u"Item-spot"_s, spots + u"/een.mp3"_s);
  const FolderMemory memory(folder_.filePath(u"mappen.ini"_s));
  FileChooser chooser;
  chooser.SetKind(u"Item-spot"_s);
  QString opened;
  QTimer look;  // repeatedly: the dialog resolves the folder first
  QObject::connect(&look, &QTimer::timeout, [&opened] {
    auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
    if (dialog == nullptr) return;
    opened = dialog->directory().path();
    dialog->reject();
  });
  look.start(0);
  chooser.ShowOpen(nullptr);
  EXPECT_EQ(opened, spots);
}

TEST_F(ChooserFolders, NextRunStartsWithTheLastFilter) {
  Choose(u"Item-spot"_s, folder_.filePath(u"een.WAV"_s));
  const FolderMemory memory(folder_.filePath(u"mappen.ini"_s));
  FileChooser chooser;
  chooser.SetKind(u"Item-spot"_s);
  EXPECT_EQ(OfferedBy(chooser).front(), u"Wave bestanden (*.WAV)"_s);
  FileChooser other;
  other.SetKind(u"Item-pingle"_s);
  EXPECT_EQ(OfferedBy(other).front(), u"Mpeg-3 (*.MP3)"_s);
}

TEST(ChooseFolder, ReturnsTheChoiceAndOnCancelTheStartFolder) {
  FileChooserScript script;
  script.Choose(u"/srv/data"_s);
  script.Cancel();
  EXPECT_EQ(ChooseFolder(nullptr, u"Map kiezen"_s, u"/start"_s, true), u"/srv/data"_s);
  EXPECT_EQ(ChooseFolder(nullptr, u"Map kiezen"_s, u"/start"_s, true), u"/start"_s);
  EXPECT_EQ(script.Shown()[1].title, u"Map kiezen"_s);
}

TEST(ChooseFolder, RealDialogShowsOnlyFoldersAndReturnsTheStartOnCancel) {
  const QTemporaryDir folder;
  QTimer::singleShot(0, [] {
    auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(dialog->fileMode(), QFileDialog::Directory);
    EXPECT_FALSE(dialog->testOption(QFileDialog::ReadOnly));
    dialog->reject();
  });
  EXPECT_EQ(ChooseFolder(nullptr, u"Map kiezen"_s, folder.path(), true), folder.path());
}

TEST(ChooseFolder, RealDialogWithoutCreationIsReadOnly) {
  const QTemporaryDir folder;
  ASSERT_TRUE(QDir(folder.path()).mkdir(u"spots"_s));
  QTimer::singleShot(0, [&folder] {
    auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
    ASSERT_NE(dialog, nullptr);
    EXPECT_TRUE(dialog->testOption(QFileDialog::ReadOnly));
    EXPECT_TRUE(dialog->testOption(QFileDialog::ShowDirsOnly));
    dialog->selectFile(folder.filePath(u"spots"_s));
    QMetaObject::invokeMethod(dialog, "accept");
    if (dialog->isVisible()) dialog->reject();
  });
  EXPECT_EQ(ChooseFolder(nullptr, u"Map kiezen"_s, folder.path(), false), folder.filePath(u"spots"_s));
}

TEST(FileChooser, FiltersMayHaveSeveralPatternsAndBlanks) {
  EXPECT_EQ(desktop::NameFilters(u"Geluid |*.Mp3; *.wav ;;*.WAV|Alles|*"_s),
            (QStringList{u"Geluid (*.Mp3 *.mp3 *.MP3 *.wav *.WAV)"_s, u"Alles (*)"_s}));
  EXPECT_TRUE(desktop::NameFilters(QString()).isEmpty());
  EXPECT_EQ(desktop::NameFilters(u"Tekst|*.txt|zonder patroon"_s), QStringList{u"Tekst (*.txt *.TXT)"_s});
}

TEST(FileChooser, NewestScriptIsUsed) {
  FileChooserScript outer;
  outer.Choose(u"/buiten.wav"_s);
  {
    FileChooserScript inner;
    inner.Choose(u"/binnen.wav"_s);
    EXPECT_EQ(FileChooser().ShowOpen(nullptr), u"/binnen.wav"_s);
  }
  EXPECT_EQ(FileChooser().ShowOpen(nullptr), u"/buiten.wav"_s);
  EXPECT_EQ(FileChooserScript::Active(), &outer);
}

TEST(FileChooser, RealDialogHasRoomForNamesAndPlaces) {
  const QTemporaryDir folder;
  FileChooser chooser;
  chooser.SetStartFolder(folder.path());
  QSize size;
  QTimer::singleShot(0, [&size] {
    auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
    ASSERT_NE(dialog, nullptr);
    size = dialog->size();
    const auto* files = dialog->findChild<QTreeView*>(u"treeView"_s);
    EXPECT_EQ(files->header()->sectionResizeMode(0), QHeaderView::Stretch);
    EXPECT_EQ(files->header()->sectionResizeMode(1), QHeaderView::ResizeToContents);
    dialog->reject();
  });
  chooser.ShowOpen(nullptr);
  EXPECT_GE(size.width(), std::min(860, QApplication::primaryScreen()->availableSize().width()));
}

class SavedFile : public testing::Test {
 protected:
  // The choice in the real dialog, in which `act` has been done.
  QString Choice(const std::function<void(QFileDialog&)>& act) const {
    QTimer::singleShot(0, [&act] {
      auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
      if (dialog == nullptr) return;
      act(*dialog);
      if (dialog->isVisible()) dialog->reject();
    });
    return desktop::ChooseSaveFile(nullptr, u"Bewaren als"_s, u"Tekst|*.txt"_s, folder.filePath(u"lijst.txt"_s));
  }

  const QTemporaryDir folder;
};

TEST_F(SavedFile, ProposalIsReturnedByTheScriptOrNothingAfterACancel) {
  FileChooserScript script;
  script.Choose(u"/srv/lijst.txt"_s);
  script.Cancel();
  for (const QString& expected : {u"/srv/lijst.txt"_s, QString()})
    EXPECT_EQ(desktop::ChooseSaveFile(nullptr, u"Bewaren"_s, u"Tekst|*.txt"_s, u"/a/voorstel.txt"_s), expected);
  EXPECT_EQ(script.Shown().front().startFolder, u"/a/voorstel.txt"_s);
  EXPECT_EQ(script.Shown().front().title, u"Bewaren"_s);
}

TEST_F(SavedFile, DialogProposesFolderAndName) {
  const QString choice = Choice([this](QFileDialog& dialog) {
    EXPECT_EQ(dialog.acceptMode(), QFileDialog::AcceptSave);
    EXPECT_EQ(dialog.windowTitle(), u"Bewaren als"_s);
    EXPECT_EQ(dialog.selectedFiles(), QStringList{folder.filePath(u"lijst.txt"_s)});
    QMetaObject::invokeMethod(&dialog, "accept");
  });
  EXPECT_EQ(choice, folder.filePath(u"lijst.txt"_s));
}

TEST_F(SavedFile, NameWithoutASuffixGetsThatOfTheProposal) {
  const QString choice = Choice([](QFileDialog& dialog) {
    dialog.findChild<QLineEdit*>(u"fileNameEdit"_s)->setText(u"andere"_s);
    QMetaObject::invokeMethod(&dialog, "accept");
  });
  EXPECT_EQ(choice, folder.filePath(u"andere.txt"_s));
}

TEST_F(SavedFile, CancelReturnsNothing) {
  EXPECT_EQ(Choice([](QFileDialog& dialog) { dialog.reject(); }), QString());
}

}  // namespace
