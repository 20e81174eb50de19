// SPDX-License-Identifier: MIT
#pragma once

#include "media/AudioEditor.h"

#include <memory>

namespace Ui {
class frmItemSpotsDetail;
}

// The editor of an item-spot: one audio file that an item can play, with its days and hours of validity.
class frmItemSpotsDetail : public AudioEditor {
  Q_OBJECT

 public:
  explicit frmItemSpotsDetail(QWidget* owner = nullptr);
  ~frmItemSpotsDetail() override;

 protected:
  QString TableName() const override;
  void FillNew() override;
  void FillDropped() override;
  void FillRecord(const dao::Recordset& row) override;
  void InitControls() override;
  bool OwnFieldsValid() override;
  QStringList ItemsUsing(qint32 id) const override;
  bool Write(qint32 id, const QString& databasePath, const QString& table) override;

 private:
  void cobStart_Change();
  void cobStop_Change();
  void txtStartUur_Change();
  void txtEindUur_Change();
  void Player_Stop();

  void WireFields();
  // The sound that follows this spot in the first block where one does.
  QString NextSound() const;
  void ShowValidity();

  std::unique_ptr<Ui::frmItemSpotsDetail> ui_;
};
