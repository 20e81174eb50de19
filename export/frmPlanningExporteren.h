// SPDX-License-Identifier: MIT
#pragma once

#include "data/forms/Form.h"

#include <memory>

class OfflineLogExport;
namespace Ui {
class frmPlanningExporteren;
}

// The planning export: writes the offline log to a file for the companion tool in the export folder, then empties the
// log. A started export always runs to its end; a request to interrupt is noted without effect.
class frmPlanningExporteren : public Form {
  Q_OBJECT

 public:
  explicit frmPlanningExporteren(QWidget* owner);
  ~frmPlanningExporteren() override;

  void Form_Load() override;

 protected:
  void CloseAsked() override { cmdAnnuleren_Click(); }

 private:
  void ConnectEvents();
  void InitForm();
  void FillForm();
  void ShowWaiting();
  void InitControls();
  void InitCommands();
  bool OpslaanProceed();
  void Opslaan();

  void cmdOk_Click();
  void cmdAnnuleren_Click();

  void ShowProgress();
  void HideProgress();
  void EnableControls(bool enable);
  void ShowStep(const QString& text, double progress);
  void SetButtonCaption(const QString& caption);
  static bool EmptyLog(const OfflineLogExport& logExport);

  std::unique_ptr<Ui::frmPlanningExporteren> ui_;
  bool interrupted_ = false;
};
