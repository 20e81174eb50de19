// SPDX-License-Identifier: MIT
#pragma once

#include "data/forms/Form.h"

#include <memory>

namespace Ui {
class frmDirectory;
}

// Lets the user choose a folder. gstrSelectedID has the start folder (or is empty) when it opens and the chosen folder
// when it closes; unchanged after a cancel.
class frmDirectory : public Form {
  Q_OBJECT

 public:
  explicit frmDirectory(QWidget* owner);
  ~frmDirectory() override;

  void Form_Load() override;

 protected:
  void CloseAsked() override { cmdAnnuleren_Click(); }
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void ConnectEvents();
  void ShowDefaults();
  void FillForm(const QString& startFolder);
  void SetDrive(const QString& startFolder);
  void ShowFolder(const QString& pathText);

  void cboDrive_Change();
  void lstDir_Click();
  void lstDir_Open();
  void cmdOk_Click();
  void cmdAnnuleren_Click();

  std::unique_ptr<Ui::frmDirectory> ui_;
  QString chosen_;
};
