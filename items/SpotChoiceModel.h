// SPDX-License-Identifier: MIT
#pragma once

#include "data/SpotState.h"
#include "data/forms/FilePresenceChecker.h"

#include <QAbstractTableModel>
#include <QDateTime>
#include <QHash>
#include <QList>

#include <vector>

// The item-spots to choose from, each with a check mark: name with its state's mark, state, length. Remembers the order
// in which they were checked.
class SpotChoiceModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  struct Spot {
    qint64 id = 0;
    QString naam;
  };
  enum Column { kNaam, kStatus, kLengte, kColumns };

  using QAbstractTableModel::QAbstractTableModel;

  // Replaces the spots; none is checked, and no state is known.
  void SetSpots(std::vector<Spot> spots);
  // The states follow from these facts at time `now`. Spots that are missing keep no state.
  void SetFacts(QHash<qint64, SpotFacts> facts, const QDateTime& now);
  void SetPresences(const std::vector<FilePresenceChecker::Result>& files);

  void Toggle(int row);
  // In the order of checking.
  std::vector<Spot> Checked() const;

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;

 Q_SIGNALS:
  void checkedChanged();
  // In place of dataChanged, which takes too long for very many rows: what is in sight has to be painted again.
  void statesChanged();

 private:
  std::vector<Spot> spots_;
  QHash<qint64, SpotFacts> facts_;
  QDateTime now_;
  QList<int> checked_;  // rows
};
