// SPDX-License-Identifier: MIT
#include "data/Globals.h"
#include "items/FolderList.h"
#include "items/frmDirectory.h"
#include "platform/controls/ComboBox.h"
#include "platform/desktop/MessageBox.h"
#include "platform/runtime/HostPath.h"
#include "tests/items/ItemEditor.h"
#include "tests/support/Hindrance.h"

#include <QApplication>
#include <QDir>
#include <QLabel>
#include <QTemporaryDir>

#include <sys/stat.h>

#include <cstdlib>
#include <memory>

using namespace Qt::StringLiterals;
using testing_support::Child;

namespace {

class Directory : public testing::Test {
 protected:
  Directory() {
    QDir(folder_.path()).mkpath(u"d/Audio/Spots"_s);
    QDir(folder_.path()).mkpath(u"d/Audio/Jingles"_s);
    QDir(folder_.path()).mkpath(u"d/Beeld"_s);
    QDir(folder_.path()).mkpath(u"e/Extra"_s);
    runtime::SetDrives(
        {{u"D"_s, folder_.path() + u"/d"}, {u"E"_s, folder_.path() + u"/e"}, {u"X"_s, folder_.path() + u"/x"}});
  }
  ~Directory() override {
    runtime::SetDrives({});
    global = Globals();
  }

  void Open(const QString& start) {
    global.gstrSelectedID = start;
    form_ = std::make_unique<frmDirectory>(nullptr);
    form_->Form_Load();
    form_->show();
  }
  FolderList& List() const { return Child<FolderList>(*form_, u"lstDir"_s); }
  controls::ComboBox& Drive() const { return Child<controls::ComboBox>(*form_, u"cboDrive"_s); }
  void Ok() const { testing_support::Click(*form_, u"cmdOk"_s); }
  QStringList Folders() const {
    QStringList folders;
    for (int line = 0; line < List().ListCount(); ++line)
      folders += List().List(line);
    return folders;
  }

  QTemporaryDir folder_;
  std::unique_ptr<frmDirectory> form_;
};

}  // namespace

TEST_F(Directory, OkWithoutAChoiceReturnsAnEmptyText) {
  Open(u""_s);
  EXPECT_EQ(Drive().currentText(), u"D:"_s);
  EXPECT_EQ(Folders(), (QStringList{u"D:\\"_s, u"D:\\Audio"_s, u"D:\\Beeld"_s}));
  Ok();
  EXPECT_EQ(global.gstrSelectedID, u""_s);
  EXPECT_FALSE(form_->isVisible());
}

TEST_F(Directory, AClickChoosesTheFullPathOfTheLine) {
  Open(u""_s);
  List().SetListIndex(2);
  Ok();
  EXPECT_EQ(global.gstrSelectedID, u"D:\\Beeld"_s);
}

TEST_F(Directory, OpeningShowsTheFoldersFromTheRootDownAndTheSubfolders) {
  Open(u""_s);
  List().SetListIndex(1);
  Q_EMIT List().doubleClicked();
  EXPECT_EQ(Folders(), (QStringList{u"D:\\"_s, u"D:\\Audio"_s, u"D:\\Audio\\Jingles"_s, u"D:\\Audio\\Spots"_s}));
  List().SetListIndex(3);
  List().setFocus();
  QTest::keyClick(&List(), Qt::Key_Return);
  EXPECT_TRUE(form_->isVisible());
  EXPECT_EQ(List().Path(), u"D:\\Audio\\Spots"_s);
  Ok();
  EXPECT_EQ(global.gstrSelectedID, u"D:\\Audio\\Spots"_s);
}

TEST_F(Directory, AfterADriveChangeOkReturnsThatDrivesRoot) {
  Open(u""_s);
  Drive().SetListIndex(1);
  Ok();
  EXPECT_EQ(global.gstrSelectedID, u"E:\\"_s);
}

TEST_F(Directory, AStartFolderIsShownAndChosen) {
  Open(u" D:\\Audio\\Spots "_s);
  EXPECT_EQ(List().Path(), u"D:\\Audio\\Spots"_s);
  Ok();
  EXPECT_EQ(global.gstrSelectedID, u"D:\\Audio\\Spots"_s);
}

TEST_F(Directory, AStartFolderThatDoesNotExistSetsOnlyTheDrive) {
  Open(u"E:\\Weg"_s);
  EXPECT_EQ(Drive().currentText(), u"E:"_s);
  EXPECT_EQ(List().Path(), u"E:\\"_s);
  Ok();
  EXPECT_EQ(global.gstrSelectedID, u"E:\\"_s);
}

// The drive list does not change then; the shown folder is chosen anyway.
TEST_F(Directory, AStartFolderThatDoesNotExistOnTheFirstDriveChoosesItsRoot) {
  Open(u"D:\\Weg"_s);
  EXPECT_EQ(List().Path(), u"D:\\"_s);
  Ok();
  EXPECT_EQ(global.gstrSelectedID, u"D:\\"_s);
}

TEST_F(Directory, AStartFolderOnAnUnknownDriveIsAnErrorAndNothingIsChosen) {
  const desktop::MessageBoxScript boxes;
  Open(u"Q:\\Spots"_s);
  ASSERT_EQ(boxes.Shown().size(), 1U);
  EXPECT_EQ(boxes.Last().title, u"FillForm"_s);
  EXPECT_TRUE(boxes.Last().text.contains(u"Q:\\Spots"_s)) << boxes.Last().text.toStdString();
  EXPECT_TRUE(form_->isVisible());
  Ok();
  EXPECT_EQ(global.gstrSelectedID, u""_s);
}

TEST_F(Directory, CancellingKeepsTheCallersValue) {
  Open(u"D:\\Audio"_s);
  List().SetListIndex(0);
  testing_support::Click(*form_, u"cmdAnnuleren"_s);
  EXPECT_EQ(global.gstrSelectedID, u"D:\\Audio"_s);
}

TEST_F(Directory, AMissingFolderAndAnUnreachableDriveLeaveTheDialogOpen) {
  Open(u""_s);
  QDir(folder_.path()).rmdir(u"d/Beeld"_s);
  List().SetListIndex(2);
  const desktop::MessageBoxScript boxes;
  Q_EMIT List().doubleClicked();
  EXPECT_EQ(boxes.Last().title, u"lstDir_Open"_s);
  EXPECT_TRUE(boxes.Last().text.contains(u"D:\\Beeld"_s));
  Drive().SetListIndex(2);
  EXPECT_EQ(boxes.Last().title, u"cboDrive_Change"_s);
  EXPECT_TRUE(boxes.Last().text.contains(u"niet bereikbaar"_s)) << boxes.Last().text.toStdString();
  EXPECT_TRUE(form_->isVisible());
}

TEST_F(Directory, TypingSelectsTheFolderWithThatPrefix) {
  Open(u""_s);
  List().setFocus();
  QTest::keyClicks(&List(), u"be"_s);
  EXPECT_EQ(List().List(List().ListIndex()), u"D:\\Beeld"_s);
}

TEST_F(Directory, ManySubfoldersAreShown) {
  for (int i = 0; i < 3000; ++i)
    QDir(folder_.path() + u"/e").mkdir(u"map%1"_s.arg(i));
  Open(u"E:\\"_s);
  EXPECT_EQ(List().ListCount(), 3002);
}

TEST_F(Directory, AnotherDriveCanBeChosenIfTheFirstIsUnreachable) {
  runtime::SetDrives({{u"A"_s, folder_.path() + u"/weg"}, {u"E"_s, folder_.path() + u"/e"}});
  const desktop::MessageBoxScript boxes;
  Open(u""_s);
  ASSERT_EQ(boxes.Shown().size(), 1U);
  EXPECT_EQ(boxes.Last().title, u"Form_Load"_s);
  Drive().SetListIndex(1);
  Ok();
  EXPECT_EQ(global.gstrSelectedID, u"E:\\"_s);
}

TEST(DirectoryDeathTest, AFolderWithoutPermissionIsAnErrorAndTheListIsUnchanged) {
  const QTemporaryDir folder;
  QDir(folder.path()).mkpath(u"Geheim/Onder"_s);
  ::chmod(QFile::encodeName(folder.path()).constData(), 0755);
  ::chmod(QFile::encodeName(folder.path() + u"/Geheim").constData(), 0);
  const auto openIt = [&] {
    testing_support::BecomeNobody();
    runtime::SetDrives({{u"D"_s, folder.path()}});
    global.gstrSelectedID = QString();
    frmDirectory form(nullptr);
    form.Form_Load();
    form.show();
    auto& list = Child<FolderList>(form, u"lstDir"_s);
    list.SetListIndex(1);
    const desktop::MessageBoxScript boxes;
    Q_EMIT list.doubleClicked();
    const bool told = boxes.Shown().size() == 1 && boxes.Last().title == u"lstDir_Open"_s &&
                      boxes.Last().text.contains(u"D:\\Geheim"_s) && boxes.Last().text.contains(u"toegang geweigerd"_s);
    std::_Exit(told && form.isVisible() && list.Path() == u"D:\\"_s ? 0 : 1);
  };
  EXPECT_EXIT(openIt(), testing::ExitedWithCode(0), "");
  ::chmod(QFile::encodeName(folder.path() + u"/Geheim").constData(), 0755);
}

TEST_F(Directory, ALongPathDoesNotWidenTheWindow) {
  const QString name(200, u'w');
  ASSERT_TRUE(QDir(folder_.path()).mkpath(u"d/%1/%1"_s.arg(name)));
  Open(u""_s);
  const QSize before = form_->size();
  Open(u"D:\\"_s + name);
  List().SetListIndex(List().ListCount() - 1);
  QApplication::processEvents();
  const auto& chosen = Child<QLabel>(*form_, u"lblGekozen"_s);
  EXPECT_EQ(chosen.text(), u"D:\\%1\\%1"_s.arg(name));
  EXPECT_EQ(chosen.toolTip(), chosen.text());
  EXPECT_EQ(form_->size(), before);
}
