// SPDX-License-Identifier: MIT
#include "app/FirstStart.h"

#include "app/Start.h"
#include "app/frmMain.h"
#include "data/Globals.h"
#include "data/Lookups.h"
#include "export/StationMemory.h"
#include "platform/controls/ComboBox.h"
#include "platform/desktop/MessageBox.h"
#include "platform/runtime/HostPath.h"
#include "platform/runtime/Probe.h"
#include "tests/support/FileFaults.h"
#include "tests/support/ModalDriver.h"
#include "tests/support/Ui.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cerrno>
#include <memory>

using namespace Qt::StringLiterals;
using desktop::MessageBoxScript;
using testing_support::Child;
using testing_support::FileFaults;
using testing_support::ModalDriver;
using testing_support::Plain;

namespace {

const QString kStations = u"frmRadioDetail"_s;
const QString kOffer = u"frmEersteStart"_s;

// An empty program folder, as after an installation.
class FirstStart : public testing::Test {
 protected:
  FirstStart() {
    runtime::SetDrives({});
    global = Globals();
    global.programFolder = runtime::PathText(folder_.path());
  }
  ~FirstStart() override {
    global = Globals();
    runtime::SetDrives({});
  }

  QString At(const QString& name) const { return folder_.path() + u'/' + name; }
  QStringList Titles() const {
    QStringList titles;
    for (const auto& box : boxes_.Shown())
      titles += box.title;
    return titles;
  }

  const MessageBoxScript boxes_;
  QTemporaryDir folder_;
  QTemporaryDir memoryFolder_;
};

void Close(QDialog& window) {
  window.close();
}

void Choose(QDialog& stations, const QString& name) {
  auto& combo = Child<controls::ComboBox>(stations, u"cboRadio"_s);
  combo.setCurrentIndex(combo.findText(name));
  Child<QPushButton>(stations, u"cmdOk"_s).click();
}

}  // namespace

TEST_F(FirstStart, IsOfferedBeforeTheLoadAndAfterNuNietTheErrorsFollow) {
  ModalDriver windows;
  bool splash = false;
  windows.OnNext(kOffer, [&](QDialog& offer) {
    EXPECT_EQ(Titles(), QStringList());
    for (const QWidget* window : QApplication::topLevelWidgets())
      splash = splash || (window->objectName() == u"frmSplash"_s && window->isVisible());
    EXPECT_FALSE(offer.parentWidget()->isVisible());
    Child<QPushButton>(offer, u"cmdAnnuleren"_s).click();
  });
  windows.OnNext(kStations, Close);
  const std::unique_ptr<frmMain> main = Start();
  EXPECT_TRUE(splash);
  EXPECT_EQ(Titles(), (QStringList{u"GetSettings"_s, u"FillCboRadio"_s, u"SetRadioNaam"_s, u"SetOnlineYn"_s}));
  EXPECT_TRUE(main->isVisible());
  EXPECT_TRUE(QDir(folder_.path()).isEmpty());
}

TEST_F(FirstStart, MakesAnEmptyStationAndContinuesWithIt) {
  ModalDriver windows;
  windows.OnNext(kOffer, [](QDialog& offer) {
    Child<QRadioButton>(offer, u"optLeeg"_s).setChecked(true);
    EXPECT_FALSE(Child<QPushButton>(offer, u"cmdOk"_s).isEnabled());
    Child<QLineEdit>(offer, u"txtNaam"_s).setText(u" Radio Eerst "_s);
    Child<QPushButton>(offer, u"cmdOk"_s).click();
  });
  windows.OnNext(kStations, [](QDialog& stations) { Choose(stations, u"Radio Eerst"_s); });
  const std::unique_ptr<frmMain> main = Start();
  EXPECT_EQ(main->windowTitle(), u"Spotrooster Radio Eerst"_s);
  EXPECT_TRUE(global.online);
  EXPECT_TRUE(QFile::exists(At(u"server/OvalistoServer.mdb"_s)));
  EXPECT_EQ(Titles(), QStringList());
}

TEST_F(FirstStart, MakesADemonstrationStationThatOneButtonTakes) {
  const StationMemory memory(memoryFolder_.filePath(u"zenders.ini"_s));
  ModalDriver windows;
  windows.OnNext(kOffer, [](QDialog& offer) { Child<QPushButton>(offer, u"cmdOk"_s).click(); });
  windows.OnNext(kStations, [](QDialog& stations) {
    EXPECT_EQ(Child<controls::ComboBox>(stations, u"cboRadio"_s).ListIndex(), -1);
    auto& last = Child<QPushButton>(stations, u"cmdLaatste"_s);
    EXPECT_EQ(Plain(last.text()), u"Verder met Radio Demo"_s);
    last.click();
  });
  const std::unique_ptr<frmMain> main = Start();
  EXPECT_EQ(main->windowTitle(), u"Spotrooster Radio Demo"_s);
  EXPECT_GT(GetNewID(u"tblItemSpots"_s, u"ID"_s, global.serverDatabasePath), 1);
}

TEST_F(FirstStart, TheMenuOffersTheFirstStationAgain) {
  ModalDriver windows;
  windows.OnNext(kOffer, [](QDialog& offer) { Child<QPushButton>(offer, u"cmdAnnuleren"_s).click(); });
  windows.OnNext(kStations, Close);
  const std::unique_ptr<frmMain> main = Start();
  windows.OnNext(kOffer, [](QDialog& offer) { Child<QPushButton>(offer, u"cmdOk"_s).click(); });
  windows.OnNext(kStations, [](QDialog& stations) { Choose(stations, u"Radio Demo"_s); });
  main->findChild<QAction*>(u"actNieuweZender"_s)->trigger();
  EXPECT_EQ(main->windowTitle(), u"Spotrooster Radio Demo"_s);
  EXPECT_TRUE(global.online);
}

TEST_F(FirstStart, AFolderThatCannotBeReadIsNoFirstStart) {
  for (const int failure : {EACCES, EIO, ETIMEDOUT}) {
    const runtime::ProbeLookScope hindered([failure](const QString&) { return failure; });
    EXPECT_FALSE(IsFirstStart());
  }
  EXPECT_TRUE(IsFirstStart());
  ASSERT_TRUE(QDir(folder_.path()).mkdir(u"data"_s));
  {
    const FileFaults unreadable(
        [](const files::FileCall& call) { return call.kind == files::FileCall::List ? EACCES : 0; });
    EXPECT_FALSE(IsFirstStart());
  }
  EXPECT_TRUE(IsFirstStart());
}

TEST_F(FirstStart, AMistypedFolderIsNoFirstStart) {
  global.programFolder += u"\\zendr"_s;
  EXPECT_FALSE(IsFirstStart());
  ModalDriver windows;
  windows.OnNext(kStations, Close);
  const std::unique_ptr<frmMain> main = Start();
  EXPECT_EQ(Titles().value(0), u"GetSettings"_s);
  EXPECT_TRUE(QDir(folder_.path()).isEmpty());
}

TEST_F(FirstStart, AFolderWithSettingsOrADatabaseIsNoFirstStart) {
  EXPECT_TRUE(IsFirstStart());
  ASSERT_TRUE(QDir(folder_.path()).mkdir(u"data"_s));
  QFile lock(At(u"data/spotrooster.lock"_s));
  ASSERT_TRUE(lock.open(QIODevice::WriteOnly));
  EXPECT_TRUE(IsFirstStart());
  for (const QString& name : {u"ovalis.ini"_s, u"data/OvalistoLocal3.mdb"_s, u"data/backup"_s}) {
    QFile file(At(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.close();
    EXPECT_FALSE(IsFirstStart()) << name.toStdString();
    ASSERT_TRUE(file.remove());
  }
}
