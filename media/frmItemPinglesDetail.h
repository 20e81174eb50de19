// SPDX-License-Identifier: MIT
#pragma once

#include "media/AudioEditor.h"

#include <memory>

namespace Ui {
class frmItemPinglesDetail;
}

// The editor of an item-pingle: a jingle that an item can play as opener, middle or closer. Required: it ignores the
// end of playback; its timer runs until the dialog closes.
class frmItemPinglesDetail : public AudioEditor {
  Q_OBJECT

 public:
  explicit frmItemPinglesDetail(QWidget* owner = nullptr);
  ~frmItemPinglesDetail() override;

 protected:
  QString TableName() const override;
  void FillRecord(const dao::Recordset& row) override;
  QStringList ItemsUsing(qint32 id) const override;
  bool Write(qint32 id, const QString& databasePath, const QString& table) override;

 private:
  std::unique_ptr<Ui::frmItemPinglesDetail> ui_;
};
