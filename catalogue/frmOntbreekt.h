// SPDX-License-Identifier: MIT
#pragma once

#include "data/forms/Form.h"
#include "data/forms/LatestTask.h"
#include "export/playout/FilesNotThere.h"
#include "platform/controls/ListFiller.h"

#include <memory>

namespace Ui {
class frmOntbreekt;
}

// The records whose audio file is not there: item-spots, jingles, and items filled by file name. A line opens its
// record in the editor.
class frmOntbreekt : public Form {
  Q_OBJECT

 public:
  explicit frmOntbreekt(QWidget* owner);
  ~frmOntbreekt() override;

  void Form_Load() override;

  // Every file was checked, or the catalogue could not be read.
  bool IsFinished() const { return finished_; }

 private:
  void Read();
  void ShowFiles(std::shared_ptr<const FilesNotThere> found);
  void OpenRecord();

  std::unique_ptr<Ui::frmOntbreekt> ui_;
  std::shared_ptr<const FilesNotThere> found_;  // its files in the order of the list
  controls::ListFiller* filler_ = nullptr;
  bool finished_ = false;
  LatestTask task_;
};
