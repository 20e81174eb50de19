// SPDX-License-Identifier: MIT
#pragma once

#include "catalogue/OverviewForm.h"
#include "catalogue/SpotView.h"
#include "data/SpotState.h"

#include <QHash>
#include <QList>

#include <memory>
#include <optional>
#include <vector>

class SpotStateLoader;

namespace Ui {
class frmItemSpots;
}

// The list of item-spots, with a mark for the state of each. Refreshes the local copy when it closes, also offline.
class frmItemSpots : public OverviewForm {
  Q_OBJECT

 public:
  explicit frmItemSpots(QWidget* owner);
  ~frmItemSpots() override;

  // Shows only the spots in these states, and lets the user choose another group.
  void ShowOnly(SpotView view);

 protected:
  QString TableOf(const Catalogue& catalogue) const override { return catalogue.itemSpots; }
  QString BothFilter(const QString& table) const override;
  void InitCommands() override;
  void cmdVerwijder_Click() override;
  SetAktief Deactivator() const override;
  void Form_Unload() override;
  QString WaitingNote() const override;
  void OnRefilled() override;
  QString CountText() const override;
  QString EmptyText() const override;
  controls::ColumnTexts Captions() const override;
  std::vector<qint64> SortKeys(controls::LineColumn column) const override;

 private:
  void cboToestand_Click();
  void IndexLines();
  void SurveyChanged(const QList<qint64>& ids);
  void SurveyFinished();
  SpotView ChosenView() const;
  bool IsInView(int line) const;
  void SetState(int line, SpotState state);
  // Of the visible lines.
  QString TotalLength() const;

  std::unique_ptr<Ui::frmItemSpots> ui_;
  std::unique_ptr<SpotStateLoader> survey_;
  QHash<qint64, int> lines_;                      // line of an ID
  std::vector<std::optional<SpotState>> states_;  // per line; empty: not known yet
  std::vector<qint32> seconds_;                   // per line; 0: not known
  bool sorted_ = false;                           // by all states
  SpotCounts counts_;                             // of states_
};
