#include "app/Start.h"

#include "app/frmMain.h"
#include "app/frmSplash.h"
#include "catalogue/Screens.h"
#include "export/Screens.h"
#include "items/Screens.h"
#include "media/MediaScreens.h"
#include "platform/desktop/Events.h"

void RegisterScreens() {
  RegisterCatalogueScreens();
  RegisterItemScreens();
  RegisterMediaScreens();
  RegisterExportScreens();
}

std::unique_ptr<frmMain> Start() {
  frmSplash splash;
  splash.show();
  desktop::RepaintWindows();
  auto main = std::make_unique<frmMain>();
  QObject::connect(main.get(), &frmMain::loading, &splash, &frmSplash::ShowStep);
  main->Form_Load();
  splash.close();
  main->show();
  return main;
}
