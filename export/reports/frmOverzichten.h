// SPDX-License-Identifier: MIT
#pragma once

#include "data/forms/FilePresenceChecker.h"
#include "data/forms/Form.h"
#include "export/reports/Reports.h"

#include <memory>
#include <vector>

namespace Ui {
class frmOverzichten;
}

// The overviews for paper: shows one, saves it as PDF or CSV, or prints it. Read-only.
class frmOverzichten : public Form {
  Q_OBJECT

 public:
  explicit frmOverzichten(QWidget* owner);
  ~frmOverzichten() override;

  void Form_Load() override;

 private:
  void optSoort_Click();
  void Periode_Change();
  void cmdPdf_Click();
  void cmdCsv_Click();
  void cmdAfdrukken_Click();
  void cmdSluiten_Click();

  void ShowReport();
  Report ChosenReport() const;
  Report ChosenAirings() const;
  void FillPeriod();
  void ShowPages();
  // Checks the report's files in the background; the states are updated when all are checked.
  void CheckFiles();
  void OnFilesChecked(const std::vector<FilePresenceChecker::Result>& found, bool last);
  // Host folder to save in: the last one used, also in earlier runs; at first the user's documents.
  QString Folder() const;
  void Save(const QString& title, const QString& filter, const QString& suffix, QByteArray (*bytesOf)(const Report&));

  std::unique_ptr<Ui::frmOverzichten> ui_;
  Report report_;
  QString folder_;           // host folder of the last file saved in this window
  QStringList files_;        // being checked; the index of a file is its ID
  FilePresences presences_;  // results, of earlier checks too until a file is checked again
  bool stale_ = false;       // results differ from those that the report was made with
  FilePresenceChecker checker_;
};
