// SPDX-License-Identifier: MIT
#pragma once

#include "data/forms/FilePresenceChecker.h"
#include "data/forms/Form.h"
#include "export/reports/Report.h"
#include "export/reports/SeenFiles.h"

#include <memory>
#include <vector>

namespace Ui {
class frmOverzichten;
}

// The overviews for paper: shows one and saves it as a PDF or for a spreadsheet, or prints it. It changes nothing.
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
  // Behind the windows: the states become those of the lists, a little later where a drive is slow.
  void LookForFiles();
  void TakeFiles(const std::vector<FilePresenceChecker::Result>& found, bool last);
  // Host folder to save in: that of the last time, also in earlier runs; at first the user's documents.
  QString Folder() const;
  void Save(const QString& title, const QString& filter, const QString& suffix, QByteArray (*bytesOf)(const Report&));

  std::unique_ptr<Ui::frmOverzichten> ui_;
  Report report_;
  QString folder_;        // host folder of what was saved last in this window
  QStringList files_;     // looked for; a file's place here is its number
  SeenFiles seen_;        // until a file was looked at again, what was seen of it before counts
  bool differs_ = false;  // from what the report was made with
  FilePresenceChecker checker_;
};
