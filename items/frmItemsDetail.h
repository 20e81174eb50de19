// SPDX-License-Identifier: MIT
#pragma once

#include "data/Catalogue.h"
#include "data/Rows.h"
#include "data/forms/EditorForm.h"
#include "export/playout/Block.h"
#include "items/ExampleFiles.h"
#include "items/SpotLengths.h"
#include "platform/controls/ListBox.h"
#include "platform/dao/Recordset.h"

#include <memory>
#include <optional>
#include <vector>

namespace Ui {
class frmItemsDetail;
}
class QCheckBox;
namespace controls {
class ComboBox;
}

// The item editor: one advertising block, filled from a list of item-spots (option 1) or from files found by a name
// pattern (option 2), with the number of spots and the jingles.
class frmItemsDetail : public EditorForm {
  Q_OBJECT

 public:
  explicit frmItemsDetail(QWidget* owner);
  ~frmItemsDetail() override;

  bool IsLocked() const { return isLocked_; }

 protected:
  void InitForm() override;
  void FillForm() override;
  void InitControls() override;
  void InitCommands() override;
  bool OpslaanProceed() override;
  void Opslaan() override;
  StoredValues ReadStoredValues() const override;
  void EmptyFields() override;
  void CloseAsked() override { cmdAnnuleren_Click(); }

 private:
  void ConnectChanges();
  void ConnectList();
  void ConnectButtons();

  // Filling.
  void FillCboOpt2VariabelNaamGedeelte();
  void FillCboOpt2Eerstedagvanweek();
  bool FillCboPingles();
  bool FillFraItemSpots();
  dao::Recordset ReadItem() const;
  void FillFields(const dao::Recordset& row);
  void FillContentOption(const dao::Recordset& row);
  void FillPattern(const dao::Recordset& row);
  void FillJingle(const QVariant& id, const QString& combo, QCheckBox& check);

  // The block with the values on the screen, saved or not.
  Block BlockOnScreen() const;
  FileNamePattern PatternOnScreen() const;

  // Validation.
  bool IsDuplicateCode();

  // Saving.
  void RequireStillThere() const;
  ItemRow ValuesOnScreen(qint32 id) const;
  void ReadPattern(ItemRow& row) const;
  bool WriteLinks(const Catalogue& catalogue) const;

  // States.
  void InitListOption();
  void InitPatternOption();
  void EmptyPattern();
  void InitFirstDay();
  void InitSpotCount();
  void InitJingles();
  void ListChanged();
  void ShowOpt2Voorbeeld();
  bool IsWeekChosen() const;
  // The ItemData of the chosen entry; empty for none.
  static std::optional<qint32> Chosen(const controls::ComboBox& combo);

  // Values that do not make the form dirty, and the list that a change of option empties.
  struct Untracked {
    QString aantalSpots;
    QString maxAantalSpots;
    bool random = false;
    std::optional<qint32> midden;
    int mix = 0;
  };
  void ConnectUnsaved();
  Untracked UntrackedOnScreen() const;
  void KeepUntracked();
  void ShowUnsaved();
  void KeepList();
  void ShowUndoList();
  void cmdOpt1Ongedaan_Click();

  // Changes.
  void FillingChanged();
  void PatternChanged();
  void NamePartsChanged();
  void JinglesChanged();

  // Buttons.
  void cmdOpt1Toevoegen_Click();
  void cmdOpt1Wijzigen_Click();
  void cmdOpt1Verwijderen_Click();
  void cmdNormalizeItem_Click();
  void cmdDirectory_Click();
  void ledMix_Click();
  void cmdShowItemSpots_Click();
  void cmdShowItemPingles_Click();
  void cmdBeluisteren_Click();
  void cmdOk_Click();
  void cmdAnnuleren_Click();

  std::unique_ptr<Ui::frmItemsDetail> ui_;
  SpotLengths lengths_;
  ExampleFiles example_;
  bool isLocked_ = false;
  qint32 locked_ = 0;     // as read; written back unchanged
  qint32 storedMix_ = 0;  // Opt2MixPunt as read or entered, and the value that the panel shows for it
  qint32 shownMix_ = 0;
  Untracked untracked_;                           // as the form was filled
  std::vector<controls::ListBox::Line> emptied_;  // the list before the last change of option
};
