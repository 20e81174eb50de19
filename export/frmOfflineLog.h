// SPDX-License-Identifier: MIT
#pragma once

#include "data/forms/Form.h"
#include "data/forms/LatestTask.h"
#include "export/LogChanges.h"

#include <memory>

namespace Ui {
class frmOfflineLog;
}

// What waits for the next export, in plain words: a line for each change of the offline log, with its fields and, when
// asked, its SQL. Changes nothing.
class frmOfflineLog : public Form {
  Q_OBJECT

 public:
  explicit frmOfflineLog(QWidget* owner);
  ~frmOfflineLog() override;

  void Form_Load() override;

  // The log was read, or the window says why it cannot be.
  bool IsRead() const { return read_; }

 private:
  void Read();
  void ShowChanges(QList<LogChange> changes);
  void ShowChosen();

  std::unique_ptr<Ui::frmOfflineLog> ui_;
  QList<LogChange> changes_;
  bool read_ = false;
  LatestTask task_;
};
