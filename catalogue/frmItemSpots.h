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

// The list of item-spots, with a mark for the state of each. It refreshes the local copy whenever it closes, also
// offline.
class frmItemSpots : public OverviewForm {
  Q_OBJECT

 public:
  explicit frmItemSpots(QWidget* owner);
  ~frmItemSpots() override;

  // Narrows the list to the spots in these states, and lets the user choose others. Hides lines only.
  void ShowOnly(SpotView view);

 protected:
  QString TableOf(const Catalogue& catalogue) const override { return catalogue.itemSpots; }
  QString BothFilter(const QString& table) const override;
  void InitCommands() override;
  void cmdVerwijder_Click() override;
  SetAktief Deactivator() const override;
  void Form_Unload() override;
  void Refilled() override;
  QString CountText() const override;
  QString EmptyText() const override;

 private:
  void cboToestand_Click();
  void FindLines();
  void SurveyChanged(const QList<qint64>& ids);
  SpotView ChosenView() const;
  bool IsInView(int line) const;
  void NoteState(int line, SpotState state);
  // Of the lines that are shown.
  QString TotalLength() const;

  std::unique_ptr<Ui::frmItemSpots> ui_;
  std::unique_ptr<SpotStateLoader> survey_;
  QHash<qint64, int> lines_;                      // where in the list an ID stands
  std::vector<std::optional<SpotState>> states_;  // of each line; none: not known yet
  std::vector<qint32> seconds_;                   // likewise; 0 when not known
  SpotCounts counts_;                             // of these
};
