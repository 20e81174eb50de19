// SPDX-License-Identifier: MIT
#pragma once

#include "catalogue/CleanupForm.h"

#include <memory>

namespace Ui {
class frmItemOpruimen;
}

// Removes one item and optionally its linked item-spots and their audio files: spot by spot (record before file), then
// the item's links, then the item. Links of other items to the same spots are not removed.
class frmItemOpruimen : public CleanupForm {
  Q_OBJECT

 public:
  explicit frmItemOpruimen(QWidget* owner);
  ~frmItemOpruimen() override;

 protected:
  QString NameOf(qint32 id, const Catalogue& catalogue) const override;
  QString UsageOf(qint32 id, const Catalogue& catalogue) const override;
  void CleanUp(const Catalogue& catalogue) override;
  void InitControls() override;
  void Form_Unload() override;

 private:
  int RecordsToDelete(const Catalogue& catalogue) const;
  void CleanUpSpots(qint32 itemID, const Catalogue& catalogue);
  void CleanUpItem(qint32 itemID, const Catalogue& catalogue);
  void chkVerwijderSpots_Click();

  std::unique_ptr<Ui::frmItemOpruimen> ui_;
};
