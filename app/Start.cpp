// SPDX-License-Identifier: MIT
#include "app/Start.h"

#include "app/FirstStart.h"
#include "app/frmMain.h"
#include "app/frmSplash.h"
#include "catalogue/Screens.h"
#include "data/Globals.h"
#include "data/ProgramLock.h"
#include "export/Screens.h"
#include "items/Screens.h"
#include "media/Screens.h"
#include "platform/dao/postgres/ServerWait.h"
#include "platform/desktop/MessageBox.h"
#include "platform/desktop/Windows.h"
#include "platform/runtime/Error.h"

using namespace Qt::StringLiterals;

void RegisterScreens() {
  RegisterCatalogueScreens();
  RegisterItemScreens();
  RegisterMediaScreens();
  RegisterExportScreens();
}

void WaitForServersBesideWindows() {
  dao::SetServerWait([](const std::function<bool(std::chrono::milliseconds)>& isReady) {
    constexpr std::chrono::milliseconds kBetweenRepaints(20);
    while (!isReady(kBetweenRepaints))
      desktop::RepaintWindows();
  });
}

std::unique_ptr<ProgramLock> TakeProgramLock() {
  try {
    return std::make_unique<ProgramLock>(global.programFolder + u"\\data"_s);
  } catch (const runtime::Error& error) {
    desktop::ShowMessageBox(nullptr, error.Description(), runtime::kStyleExclamation, u"Spotrooster"_s);
    return nullptr;
  }
}

std::unique_ptr<frmMain> Start() {
  WaitForServersBesideWindows();
  frmSplash splash;
  splash.show();
  desktop::RepaintWindows();
  auto main = std::make_unique<frmMain>();
  QObject::connect(main.get(), &frmMain::loading, &splash, &frmSplash::ShowStep);
  if (IsFirstStart()) OfferFirstStation(main.get());
  main->Form_Load();
  splash.close();
  main->show();
  return main;
}
