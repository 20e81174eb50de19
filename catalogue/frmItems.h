#pragma once
#include "catalogue/OverviewForm.h"

#include <memory>

namespace Ui {
class frmItems;
}

// The list of items. Its Desaktiveer button stays enabled whatever is selected.
class frmItems : public OverviewForm {
  Q_OBJECT

 public:
  explicit frmItems(QWidget* owner);
  ~frmItems() override;

 protected:
  QString TableOf(const Catalogue& catalogue) const override { return catalogue.items; }
  QString BothFilter(const QString&) const override { return {}; }
  void cmdVerwijder_Click() override;
  SetAktief Deactivator() const override;
  void Form_Unload() override;

 private:
  std::unique_ptr<Ui::frmItems> ui_;
};
