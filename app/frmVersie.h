// SPDX-License-Identifier: MIT
#pragma once

#include "data/forms/Form.h"

#include <memory>

namespace Ui {
class frmVersie;
}

// Shows the version and the files in use, and copies them with the last errors for the station's administrator.
class frmVersie : public Form {
  Q_OBJECT

 public:
  explicit frmVersie(QWidget* owner);
  ~frmVersie() override;

  void Form_Load() override;

 private:
  void cmdKopieren_Click();
  void cmdSluiten_Click();

  std::unique_ptr<Ui::frmVersie> ui_;
};
