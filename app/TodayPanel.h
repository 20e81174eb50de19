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

// What needs attention today: counts of item-spots by state, of blocks that are silent or too short now, and of changes
// not exported yet, each with a button that opens the screen. Item-spots are counted in the background; an unknown
// count is shown as a dash, never as an error.
class TodayPanel : public QGroupBox {
  Q_OBJECT

 public:
  explicit TodayPanel(QWidget* parent = nullptr);
  ~TodayPanel() override;

  // Counts the current catalogue again.
  void Count();
  void ShowNotExported(const std::optional<int>& count);
  // Enables the buttons that open a screen.
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
