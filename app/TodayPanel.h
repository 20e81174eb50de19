// SPDX-License-Identifier: MIT
#pragma once

#include "catalogue/SpotView.h"

#include <QGroupBox>

#include <memory>
#include <optional>

class QLabel;
class BlockSurvey;
class SpotStateLoader;
namespace Ui {
class TodayPanel;
}

// What needs a hand today: counts of the item-spots by state, of the blocks that would be silent or too short now, and
// of the changes that wait for an export, each with a button that leads there. The item-spots are counted in the
// background; what is not known is shown as a dash, never as an error.
class TodayPanel : public QGroupBox {
  Q_OBJECT

 public:
  explicit TodayPanel(QWidget* parent = nullptr);
  ~TodayPanel() override;

  // Counts the present catalogue anew.
  void Count();
  void ShowNotExported(const std::optional<int>& count);
  // Which buttons lead somewhere.
  void EnableButtons(bool spots, bool blocks, bool exporting);

 Q_SIGNALS:
  void spotsAsked(SpotView view);
  void blocksAsked();
  void exportAsked();

 private:
  void InitRows();
  void ShowCounts();

  std::unique_ptr<Ui::TodayPanel> ui_;
  std::unique_ptr<SpotStateLoader> survey_;
  std::unique_ptr<BlockSurvey> blocks_;
};
