// SPDX-License-Identifier: MIT
#pragma once

#include "catalogue/CleanupForm.h"

#include <memory>

namespace Ui {
class frmItemSpotOpruimen;
}

// Removes one item-spot: its record, its audio file, or both; the record first. The two steps are not atomic.
class frmItemSpotOpruimen : public CleanupForm {
  Q_OBJECT

 public:
  explicit frmItemSpotOpruimen(QWidget* owner);
  ~frmItemSpotOpruimen() override;

 protected:
  QString NameOf(qint32 id, const Catalogue& catalogue) const override;
  QString UsageOf(qint32 id, const Catalogue& catalogue) const override;
  void CleanUp(const Catalogue& catalogue) override;

 private:
  std::unique_ptr<Ui::frmItemSpotOpruimen> ui_;
};
