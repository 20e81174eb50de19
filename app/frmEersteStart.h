// SPDX-License-Identifier: MIT
#pragma once

#include "data/forms/Form.h"

#include <memory>

namespace Ui {
class frmEersteStart;
}

// Offers at the first start to make an empty or a demonstration station in the program folder.
class frmEersteStart : public Form {
  Q_OBJECT

 public:
  explicit frmEersteStart(QWidget* owner);
  ~frmEersteStart() override;

  void Form_Load() override;

  // True when a station was made.
  bool Made() const { return made_; }

 private:
  void ConnectEvents();
  void InitCommands();
  void optLeeg_Change();
  void txtNaam_Change();
  void cmdOk_Click();
  void cmdAnnuleren_Click();
  void MakeStation() const;

  std::unique_ptr<Ui::frmEersteStart> ui_;
  bool made_ = false;
};
