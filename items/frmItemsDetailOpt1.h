// SPDX-License-Identifier: MIT
#pragma once

#include "data/forms/EditorForm.h"

#include <memory>

namespace Ui {
class frmItemsDetailOpt1;
}
namespace controls {
class ListBox;
}

// Adds one item-spot to the list of an item, or several at once, or changes the text of an entry. Changes only the list
// in the item editor, not the database.
class frmItemsDetailOpt1 : public EditorForm {
  Q_OBJECT

 public:
  // The caller owns the list.
  frmItemsDetailOpt1(QWidget* owner, controls::ListBox& lstOpt1ItemSpots);
  ~frmItemsDetailOpt1() override;

 protected:
  void InitForm() override;
  void FillForm() override;
  bool OpslaanProceed() override;
  void Opslaan() override;
  void CloseAsked() override { cmdAnnuleren_Click(); }

 private:
  void ConnectEvents();
  void FillCboItemSpot();

  void cboItemSpot_Click();
  void wgtMeerdere_Add();
  void cmdOk_Click();
  void cmdAnnuleren_Click();

  std::unique_ptr<Ui::frmItemsDetailOpt1> ui_;
  controls::ListBox& list_;
};
