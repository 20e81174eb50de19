// SPDX-License-Identifier: MIT
#pragma once

#include "catalogue/SpotView.h"
#include "data/UnreadableReason.h"

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
// not exported yet, each with a button that opens the screen. Item-spots are counted in the background: until then a
// count is a dash. When a database cannot be read, the rows show the reason in place of their count, never a box.
class TodayPanel : public QGroupBox {
  Q_OBJECT

 public:
  explicit TodayPanel(QWidget* parent = nullptr);
  ~TodayPanel() override;

  // Counts the current catalogue again.
  void Count();
  // Without a count: the reason.
  void ShowNotExported(const std::optional<int>& count, const UnreadableReason& reason = {});
  // Enables the buttons that open a screen.
  void EnableButtons(bool spots, bool blocks, bool exporting, bool waiting);

 Q_SIGNALS:
  void spotsAsked(SpotView view);
  void blocksAsked();
  void exportAsked();
  void waitingAsked();
  // The catalogue was read (an empty reason) or could not be read.
  void catalogueRead(const UnreadableReason& reason);

 private:
  void InitRows();
  void ShowCounts();
  void OnSpotsFinished();

  std::unique_ptr<Ui::TodayPanel> ui_;
  std::unique_ptr<SpotStateLoader> survey_;
  std::unique_ptr<BlockSurvey> blocks_;
};
