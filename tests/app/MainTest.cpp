// SPDX-License-Identifier: MIT
#include "tests/app/MainTest.h"

#include "app/StatusPanel.h"
#include "data/Globals.h"
#include "platform/controls/ComboBox.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/TextFile.h"
#include "tests/support/ModalDriver.h"
#include "tests/support/Ui.h"

#include <QAction>
#include <QDialog>
#include <QPushButton>
#include <QToolBar>
#include <QToolButton>

using namespace Qt::StringLiterals;
using testing_support::Child;

namespace {

const QList<Screen> kScreens{Screen::Items,    Screen::ItemSpots, Screen::ItemPingles, Screen::PlanningExporteren,
                             Screen::Defaults, Screen::OfflineLog};

}  // namespace

MainTest::MainTest() {
  const QString folder = global.programFolder;
  runtime::WriteFile(folder + u"\\ovalis.ini"_s,
                     "[Files]\r\nDatabasePath=" + global.databasePath.toLatin1() +
                         "\r\nExportPath=" + global.exportPath.toLatin1() +
                         "\r\n[Audio Players]\r\nCard=-1\r\nBuffers=20\r\nBuffer_Size=2048\r\nCallback=0\r\n");
  global = Globals();
  global.programFolder = folder;
  for (const Screen screen : kScreens) {
    RegisterScreen(screen, [this, screen](QWidget* owner) {
      opened_ += screen;
      owner_ = owner;
      if (whenOpened_) whenOpened_();
    });
  }
}

MainTest::~MainTest() {
  for (const Screen screen : kScreens)
    RegisterScreen(screen, {});
}

void MainTest::Load(frmMain& main, const QString& station) {
  testing_support::ModalDriver driver;
  driver.OnNext(u"frmRadioDetail"_s, [&](QDialog& window) {
    if (station.isEmpty()) {
      window.close();
      return;
    }
    auto& radio = Child<controls::ComboBox>(window, u"cboRadio"_s);
    radio.SetListIndex(radio.findText(station));
    Child<QPushButton>(window, u"cmdOk"_s).click();
  });
  main.Form_Load();
  main.show();
}

QAction& MainTest::Action(const frmMain& main, const QString& name) {
  auto* action = main.findChild<QAction*>(name);
  if (action == nullptr) throw runtime::Error(u"no action "_s + name);
  return *action;
}

void MainTest::PressTool(const frmMain& main, const QString& name) {
  auto& bar = Child<QToolBar>(main, u"tlbMain"_s);
  qobject_cast<QToolButton*>(bar.widgetForAction(&Action(main, name)))->click();
}

QString MainTest::Panel(const frmMain& main, const QString& name) {
  return Child<StatusPanel>(main, name).Text();
}
