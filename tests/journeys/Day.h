// SPDX-License-Identifier: MIT
#pragma once

#include "platform/desktop/FileChooser.h"
#include "platform/runtime/Clock.h"
#include "tests/journeys/CatalogueModel.h"
#include "tests/journeys/Desk.h"
#include "tests/journeys/Planner.h"

#include <QString>
#include <QStringList>

#include <atomic>

// A complete day through the real windows, online and offline, and the expected effect of each task on the catalogue.
class Day {
 public:
  // Makes a demonstration station below the folder (host path).
  explicit Day(const QString& folder);
  ~Day();
  Day(const Day&) = delete;
  Day& operator=(const Day&) = delete;

  void Live();

  // Host paths. The second is a copy of the server from the moment at which work became offline.
  QString Station() const;
  QString Server() const;
  QString ServerAsItWas() const;

  // The expected catalogue.
  const CatalogueModel& Meant() const { return model_; }

 private:
  void Walk();
  void WorkOnline();
  void FirstSpotsOffline();
  void SecondSpotOffline();
  void JinglesOffline();
  void ItemsOffline();
  void ExportOffline();
  void ReturnOnline();

  void MakeSpot(const QString& naam, const QString& sound, int id);
  void MakeJingle(const QString& naam, const QString& sound);
  void MakeListItem(const BlockWork& work, const QStringList& spots);
  void MakePatternItem(const BlockWork& work);
  CatalogueModel::Row BlockRow(const BlockWork& work);
  void CleanUpItem(const QString& naam);

  CatalogueModel::Row& Spot(const QString& naam);
  CatalogueModel::Row& Jingle(const QString& naam);
  CatalogueModel::Row& Item(const QString& naam);

  QString folder_;
  std::atomic<int> seconds_ = 0;
  runtime::ClockScope clock_;
  desktop::FileChooserScript files_;
  Desk desk_;
  Planner planner_;
  CatalogueModel model_;
};
