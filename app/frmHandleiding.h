// SPDX-License-Identifier: MIT
#pragma once

#include "data/forms/Form.h"

#include <memory>

namespace Ui {
class frmHandleiding;
}

// Shows the manual, which is a resource of the program.
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
