// SPDX-License-Identifier: MIT
#pragma once

#include "data/forms/Form.h"

#include <QDate>

#include <memory>

namespace Ui {
class frmGeldigheid;
}

// Asks for the last day, or for the hours, that the marked item-spots will all get. Writes nothing.
class frmGeldigheid : public Form {
  Q_OBJECT

 public:
  enum class Part { EindDatum, Uren };

  // `count`: "20 item-spots".
  frmGeldigheid(QWidget* owner, Part part, const QString& count);
  ~frmGeldigheid() override;

  void Form_Load() override;

  // Whether OK was pressed with a valid value.
  bool IsAccepted() const { return accepted_; }
  QDate EindDatum() const;
  qint32 StartUur() const;
  qint32 EindUur() const;

 private:
  void cmdOk_Click();
  bool OpslaanProceed();

  std::unique_ptr<Ui::frmGeldigheid> ui_;
  Part part_;
  bool accepted_ = false;
};
