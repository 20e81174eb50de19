// SPDX-License-Identifier: MIT
#pragma once

#include "data/forms/Form.h"

#include <memory>

namespace Ui {
class frmNieuweZender;
}

// Adds an empty station with a number and a name to the program folder.
class frmNieuweZender : public Form {
  Q_OBJECT

 public:
  explicit frmNieuweZender(QWidget* owner);
  ~frmNieuweZender() override;

  void Form_Load() override;

  // True when a station was made.
  bool Made() const { return made_; }

 private:
  void ConnectEvents();
  void InitCommands();
  void cmdOk_Click();
  void cmdAnnuleren_Click();

  std::unique_ptr<Ui::frmNieuweZender> ui_;
  bool made_ = false;
};
