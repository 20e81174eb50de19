// SPDX-License-Identifier: MIT
#pragma once

#include "data/forms/Form.h"

#include <memory>

namespace Ui {
class frmRadioDetail;
}

// The station selection: sets global.stationNumber. Closing without a choice leaves the number unchanged.
class frmRadioDetail : public Form {
  Q_OBJECT

 public:
  explicit frmRadioDetail(QWidget* owner);
  ~frmRadioDetail() override;

  void Form_Load() override;

 private:
  void ConnectEvents();
  void FillCboRadio();
  void cmdOk_Click();

  std::unique_ptr<Ui::frmRadioDetail> ui_;
};
