// SPDX-License-Identifier: MIT
#pragma once

#include "data/forms/FilePresenceChecker.h"
#include "data/forms/LatestTask.h"
#include "items/SpotChoiceModel.h"

#include <QWidget>

#include <memory>

class QSortFilterProxyModel;
namespace Ui {
class SpotChoice;
}

// A list in which several item-spots can be searched and checked, with a button that takes them in the order of
// checking. States and files are read in the background.
class SpotChoice : public QWidget {
  Q_OBJECT

 public:
  explicit SpotChoice(QWidget* parent = nullptr);
  ~SpotChoice() override;

  // Offers these spots of the current catalogue.
  void SetSpots(std::vector<SpotChoiceModel::Spot> spots);
  std::vector<SpotChoiceModel::Spot> Checked() const { return model_.Checked(); }
  // Of the label before its search field, for fields above it.
  int LabelWidth() const;

 Q_SIGNALS:
  // The user wants to add the checked spots; there is at least one.
  void addRequested();

 private:
  void ConnectEvents();
  void ReadStates();
  void ShowChecked();
  void ToggleCurrent();
  void Enter();

  std::unique_ptr<Ui::SpotChoice> ui_;
  SpotChoiceModel model_;
  QSortFilterProxyModel* shown_;
  LatestTask reading_;
  FilePresenceChecker checker_;
};
