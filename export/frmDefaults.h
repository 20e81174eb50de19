// SPDX-License-Identifier: MIT
#pragma once

#include "data/forms/Form.h"

#include <memory>

class FolderSelect;
namespace Ui {
class frmDefaults;
}

// The settings dialog: online or offline work, and the folder of the shared database. Choosing online opens the
// planning export.
class frmDefaults : public Form {
  Q_OBJECT

 public:
  explicit frmDefaults(QWidget* owner);
  ~frmDefaults() override;

  void Form_Load() override;

 private:
  void ConnectEvents();
  void FillForm();
  void StoreDatabasePath();

  void optOnline_Click();
  void optOffline_Click();
  void cmdDatabasePath_Click();
  bool OpslaanProceed();
  void cmdOk_Click();
  void cmdAnnuleren_Click();

  std::unique_ptr<Ui::frmDefaults> ui_;
  FolderSelect* isFolder_;
  bool exportNeeded_ = false;
  bool filling_ = false;
};
