// SPDX-License-Identifier: MIT
#pragma once

#include "data/forms/Form.h"
#include "data/forms/LatestTask.h"
#include "export/playout/DayPlans.h"
#include "export/playout/SoundFiles.h"
#include "platform/controls/ListFiller.h"

#include <memory>
#include <optional>
#include <vector>

namespace Ui {
class frmWeek;
}

// Two weeks day by day: how many item-spots run, which begin and end, which items would be silent. It changes nothing
// itself; a line opens its record in the editor.
class frmWeek : public Form {
  Q_OBJECT

 public:
  explicit frmWeek(QWidget* owner);
  ~frmWeek() override;

  void Form_Load() override;

  // The days are shown, or the reason why they cannot be.
  bool IsPlanned() const { return planned_; }

 private:
  // The catalogue as it was read; shared with the background task, never changed.
  struct Records {
    std::vector<BlockSpot> spots;  // by name
    std::vector<Block> blocks;     // by name
    SoundFiles files;
  };
  enum class Kind { SilentItem, WithoutFile, Begins, OneDay, Ends, Runs };
  // An item or an item-spot of shown_.
  struct Line {
    Kind kind = Kind::Runs;
    const Block* item = nullptr;
    const BlockSpot* spot = nullptr;
  };

  void SetUpIcons();
  void ConnectEvents();
  void Read();
  void Plan();
  void ShowPlans(std::shared_ptr<const Records> records, std::vector<DayPlan> plans);
  void ShowFailure(const QString& reason);
  void ShowPeriod();
  void ShowDay();
  std::vector<Line> LinesOf(const DayPlan& day) const;
  static controls::ListBox::Line LineOf(const Line& line);
  static controls::LineDetails LookOf(Kind kind);
  void MoveBy(int days);
  void OpenRecord();

  std::unique_ptr<Ui::frmWeek> ui_;
  QDate first_;                             // a Monday
  std::shared_ptr<const Records> records_;  // read last
  std::shared_ptr<const Records> shown_;    // those of plans_
  std::vector<DayPlan> plans_;
  std::vector<Line> lines_;  // of lstDag
  controls::ListFiller* filler_ = nullptr;
  bool planned_ = false;
  LatestTask task_;
};
