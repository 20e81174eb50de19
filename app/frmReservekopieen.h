// SPDX-License-Identifier: MIT
#pragma once

#include "data/BackupRetention.h"
#include "data/forms/Form.h"
#include "data/forms/LatestTask.h"

#include <memory>

namespace Ui {
class frmReservekopieen;
}

// The backups of the shared and the local database, with their age.
class frmReservekopieen : public Form {
  Q_OBJECT

 public:
  // `problem`: why the shared database was not copied today; empty when it was.
  explicit frmReservekopieen(QWidget* owner, QString problem = {});
  ~frmReservekopieen() override;

  void Form_Load() override;

  // The folders were read.
  bool IsRead() const { return read_; }

 private:
  struct Copies {
    QList<BackupFile> server, local;
    bool enabled = true;
  };
  void ShowCopies(const Copies& copies);
  void AddLines(const QString& database, const QString& databasePath, const QList<BackupFile>& copies);

  std::unique_ptr<Ui::frmReservekopieen> ui_;
  QString problem_;
  bool read_ = false;
  LatestTask task_;
};
