// SPDX-License-Identifier: MIT
#pragma once

#include "data/Rows.h"
#include "media/AudioFields.h"

#include <memory>

namespace Ui {
class frmItemPinglesDetail;
}

// The editor of an item-pingle: a jingle that an item can play as opener, middle or closer. Required: it ignores the
// end of playback; its timer runs until the dialog closes.
class frmItemPinglesDetail : public EditorForm {
  Q_OBJECT

 public:
  explicit frmItemPinglesDetail(QWidget* owner = nullptr);
  ~frmItemPinglesDetail() override;

 protected:
  void InitForm() override;
  void FillForm() override;
  void InitControls() override;
  void Loaded() override { fields_.Open(); }
  bool OpslaanProceed() override;
  void Opslaan() override;
  void Form_Unload() override;
  StoredValues ReadStoredValues() const override;
  void EmptyFields() override { fields_.Empty(); }

 private:
  void cmdOk_Click();
  void cmdAnnuleren_Click();

  void FillRecord(const dao::Recordset& row);
  ItemPingleRow RowToSave(qint32 id) const;

  std::unique_ptr<Ui::frmItemPinglesDetail> ui_;
  AudioFields fields_;
};
