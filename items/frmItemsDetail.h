#pragma once
#include "data/Catalogue.h"
#include "data/EditorForm.h"
#include "data/Rows.h"
#include "items/SpotList.h"
#include "platform/dao/Recordset.h"

#include <memory>

namespace Ui {
class frmItemsDetail;
}
class QCheckBox;
namespace controls {
class ComboBox;
}

// The item editor: one advertising block, filled from a list of item-spots (option 1) or from files found by a name
// pattern (option 2), with the number of spots and the jingles around them.
class frmItemsDetail : public EditorForm {
  Q_OBJECT

 public:
  explicit frmItemsDetail(QWidget* owner);
  ~frmItemsDetail() override;

  void Form_Load() override;

  bool IsLocked() const { return isLocked_; }

 protected:
  bool OpslaanProceed() override;
  void Opslaan() override;
  void CloseAsked() override { cmdAnnuleren_Click(); }

 private:
  void ConnectEvents();

  void InitForm();
  void FillForm();
  void InitControls();
  void InitCommands();
  bool IsDuplicateCode();

  // Filling.
  void FillCboOpt2VariabelNaamGedeelte();
  void FillCboOpt2Eerstedagvanweek();
  void FillCboPingles();
  void FillFraItemSpots();
  void FillFields(const dao::Recordset& row);
  void FillFilling(const dao::Recordset& row);
  void FillJingle(const QVariant& id, const QString& combo, QCheckBox& check);

  // Saving.
  ItemRow ValuesOnScreen() const;
  void ReadPattern(ItemRow& row) const;
  void RequireStillThere(const Catalogue& catalogue) const;
  bool WriteLinks(const Catalogue& catalogue) const;

  // Validation.
  bool Refuse(int message, const QString& value1, const QString& value2, QWidget* focus);
  bool FilledWithin(const QString& text, const QString& label, int longest, QWidget* focus);
  bool PatternProceed();
  bool SeveralSpotsProceed();

  // States.
  void InitListOption();
  void InitPatternOption();
  void EmptyPattern();
  void InitFirstDay();
  void InitSpotCount();
  void InitJingles();

  void ShowOpt2Voorbeeld();
  void ListChanged();
  bool IsWeekChosen() const;

  // Events.
  void txtOpt2_Change();
  void cboOpt2VariabelNaamGedeelte_Click();
  void optSpots_Click();
  void opt_Click();
  void chkPingle_Click();
  void ledMix_Click();
  void lstOpt1ItemSpots_Click();
  void cmdOpt1Toevoegen_Click();
  void cmdOpt1Wijzigen_Click();
  void cmdOpt1Verwijderen_Click();
  void cmdDirectory_Click();
  void cmdShowItemSpots_Click();
  void cmdShowItemPingles_Click();
  void cmdNormalizeItem_Click();
  void cmdOk_Click();
  void cmdAnnuleren_Click();

  std::unique_ptr<Ui::frmItemsDetail> ui_;
  SpotLengths lengths_;
  bool isLocked_ = false;
  qint32 locked_ = 0;     // as read, written back unchanged
  qint32 storedMix_ = 0;  // Opt2MixPunt as read, and what the panel made of it
  qint32 shownMix_ = 0;
};
