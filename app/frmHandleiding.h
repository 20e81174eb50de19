// SPDX-License-Identifier: MIT
#pragma once

#include "data/forms/Form.h"

#include <memory>

namespace Ui {
class frmHandleiding;
}

// The manual, which the program carries with it.
class frmHandleiding : public Form {
  Q_OBJECT

 public:
  explicit frmHandleiding(QWidget* owner);
  ~frmHandleiding() override;

  void Form_Load() override;

 private:
  void cmdSluiten_Click();

  std::unique_ptr<Ui::frmHandleiding> ui_;
};
