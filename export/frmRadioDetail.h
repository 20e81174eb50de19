// SPDX-License-Identifier: MIT
#pragma once

#include "data/forms/Form.h"

#include <memory>

namespace Ui {
class frmRadioDetail;
}

// The station selection: sets global.stationNumber. Closing without a choice leaves the number unchanged. No station is
// chosen beforehand; a button takes the one that was used last.
class frmRadioDetail : public Form {
  Q_OBJECT

 public:
  explicit frmRadioDetail(QWidget* owner);
  ~frmRadioDetail() override;

  void Form_Load() override;

  // True when the user chose a station.
  bool HasChosen() const { return hasChosen_; }

 private:
  void ConnectEvents();
  void FillCboRadio();
  void OfferLast();
  int LineOfLast() const;
  void cboRadio_Change();
  void cmdLaatste_Click();
  void cmdOk_Click();

  std::unique_ptr<Ui::frmRadioDetail> ui_;
  bool hasChosen_ = false;
};
