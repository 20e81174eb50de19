// SPDX-License-Identifier: MIT
#pragma once

#include "catalogue/OverviewForm.h"
#include "data/forms/LatestTask.h"

#include <memory>

namespace Ui {
class frmItemPingles;
}

// The list of item-pingles: no filter, and a question instead of a cleanup dialog.
class frmItemPingles : public OverviewForm {
  Q_OBJECT

 public:
  explicit frmItemPingles(QWidget* owner);
  ~frmItemPingles() override;

 protected:
  QString TableOf(const Catalogue& catalogue) const override { return catalogue.itemPingles; }
  QString BothFilter(const QString&) const override { return {}; }
  void InitForm() override {}
  void InitCommands() override;
  void cmdVerwijder_Click() override;
  void Form_Unload() override;

 private:
  void ShowUsage();

  std::unique_ptr<Ui::frmItemPingles> ui_;
  LatestTask usage_;
};
