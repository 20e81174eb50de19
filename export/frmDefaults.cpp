// SPDX-License-Identifier: MIT
#include "export/frmDefaults.h"

#include "data/Globals.h"
#include "data/Lookups.h"
#include "data/Messages.h"
#include "data/SettingsFile.h"
#include "data/forms/OptionButton.h"
#include "data/forms/Screens.h"
#include "export/FolderSelect.h"
#include "export/ui_frmDefaults.h"
#include "platform/dao/postgres/ServerAddress.h"
#include "platform/desktop/Icons.h"
#include "platform/desktop/WaitPointer.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Trapped.h"

using namespace Qt::StringLiterals;
using runtime::Trapped;

namespace {}

frmDefaults::frmDefaults(QWidget* owner)
    : Form(owner), ui_(std::make_unique<Ui::frmDefaults>()), isFolder_(new FolderSelect(this, u"isFolder"_s)) {
  ui_->setupUi(this);
  ui_->cmdDatabasePath->setIcon(desktop::Icon(u"map"_s));
  isFolder_->SetPrompt(u"Geef de gewenste map op"_s);
  isFolder_->SetMayCreate(true);
  ConnectEvents();
  constexpr QSize kOpeningSize(560, 320);
  resize(kOpeningSize);
}

frmDefaults::~frmDefaults() = default;

void frmDefaults::ConnectEvents() {
  OnOptionClick(ui_->optOnline, [this] { optOnline_Click(); });
  OnOptionClick(ui_->optOffline, [this] { optOffline_Click(); });
  connect(ui_->cmdDatabasePath, &QPushButton::clicked, this, &frmDefaults::cmdDatabasePath_Click);
  connect(ui_->cmdOk, &QPushButton::clicked, this, &frmDefaults::cmdOk_Click);
  connect(ui_->cmdAnnuleren, &QPushButton::clicked, this, &frmDefaults::cmdAnnuleren_Click);
}

void frmDefaults::Form_Load() {
  Trapped(__func__, [&] {
    const desktop::WaitPointer wait;
    FillForm();
  });
}

// Showing the current mode is not a choice by the user: no warning, no export.
void frmDefaults::FillForm() {
  Trapped(__func__, [&] {
    filling_ = true;
    ui_->optOnline->setChecked(global.online);
    ui_->optOffline->setChecked(!global.online);
    filling_ = false;
    (global.online ? ui_->optOnline : ui_->optOffline)->setFocus();
    if (global.databasePath.size() > 1) ui_->txtDatabasepath->setText(global.databasePath);
  });
}

void frmDefaults::optOnline_Click() {
  if (filling_) return;
  Trapped(__func__, [&] {
    ShowItemsMessage(u"Als U van offline naar online overschakelt, dient u meteen ook te exporteren !"_s,
                     kStyleExclamation);
    exportNeeded_ = true;
  });
}

void frmDefaults::optOffline_Click() {
  if (filling_) return;
  Trapped(__func__, [&] { exportNeeded_ = false; });
}

void frmDefaults::cmdDatabasePath_Click() {
  Trapped(__func__, [&] {
    if (!ui_->txtDatabasepath->text().isEmpty()) isFolder_->SetFolder(ui_->txtDatabasepath->text());
    ui_->txtDatabasepath->setText(isFolder_->Browse());
  });
}

bool frmDefaults::OpslaanProceed() {
  return true;
}

void frmDefaults::cmdOk_Click() {
  Trapped(__func__, [&] {
    if (!OpslaanProceed()) return;
    {
      const desktop::WaitPointer wait;
      global.lastResult = Update_cdeInstellingen_OnlineYn(ui_->optOnline->isChecked() ? -1 : 0);
      SetOnlineYn();
      StoreDatabasePath();
    }
    if (exportNeeded_) ShowScreen(Screen::PlanningExporteren, this);
    Unload();
  });
}

void frmDefaults::StoreDatabasePath() {
  const QString path = runtime::TrimBlanks(ui_->txtDatabasepath->text());
  dao::RefusePassword(path);
  IniFile file = SettingsFile();
  file.SetSection(settings::kFiles.toString());
  file.SetKey(settings::kDatabasePath.toString());
  file.SetValue(path);
  global.databasePath = file.Value();
}

void frmDefaults::cmdAnnuleren_Click() {
  Trapped(__func__, [&] { Unload(); });
}
