// SPDX-License-Identifier: MIT
#include "export/Screens.h"

#include "data/forms/Screens.h"
#include "export/frmDefaults.h"
#include "export/frmOfflineLog.h"
#include "export/frmPlanningExporteren.h"

void RegisterExportScreens() {
  RegisterScreen(Screen::PlanningExporteren, [](QWidget* owner) { frmPlanningExporteren(owner).ShowModal(); });
  RegisterScreen(Screen::Defaults, [](QWidget* owner) { frmDefaults(owner).ShowModal(); });
  RegisterScreen(Screen::OfflineLog, [](QWidget* owner) { frmOfflineLog(owner).ShowModal(); });
}
