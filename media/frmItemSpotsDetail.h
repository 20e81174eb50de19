// SPDX-License-Identifier: MIT
#pragma once

#include "data/Rows.h"
#include "media/AudioFields.h"
#include "media/SpotSeries.h"

#include <memory>

namespace Ui {
class frmItemSpotsDetail;
}

// The editor of an item-spot: one audio file that an item can play, with its days and hours of validity.
class frmItemSpotsDetail : public EditorForm {
  Q_OBJECT

 public:
  explicit frmItemSpotsDetail(QWidget* owner = nullptr);
  ~frmItemSpotsDetail() override;

  // Saves a loaded new record with the days, hours and state of the last one, without showing it. False when it was
  // refused; its message was shown, and the window can be.
  bool SaveLikeLast();

 protected:
  void InitForm() override;
  void FillForm() override;
  void InitControls() override;
  void Loaded() override;
  bool OpslaanProceed() override;
  void Opslaan() override;
  void Form_Unload() override;
  StoredValues ReadStoredValues() const override;
  void EmptyFields() override;

 private:
  void cmdOk_Click();
  void cmdAnnuleren_Click();
  void cmdVorige_Click();
  void cmdRest_Click();
  void Player_Stop();

  void WireFields();
  void WireSeries();
  void ShowSeries();
  SpotTimes TimesOnScreen() const;
  void TakeLastTimes();
  void FillNew();
  void FillRecord(const dao::Recordset& row);
  void DateOrHourChanged();
  bool ValidityProceed();
  ItemSpotRow RowToSave(qint32 id) const;
  // The sound that follows this spot in the first block where one does.
  QString NextSound() const;
  void ShowValidity();

  std::unique_ptr<Ui::frmItemSpotsDetail> ui_;
  AudioFields fields_;
};
