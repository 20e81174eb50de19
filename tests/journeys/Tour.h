// SPDX-License-Identifier: MIT
#pragma once

#include "tests/journeys/Desk.h"
#include "tests/journeys/Planner.h"

#include <QDateTime>
#include <QString>

#include <atomic>

// The tour: a whole day, walked through the real windows as a planner would, with a picture of every screen. Online
// a spot and an item of each kind are made; offline come changes, an export, and the way back online with the export
// that it forces. Each part checks what it did; StepFailed tells what went wrong.
class Tour {
 public:
  // `folder`: where pictures and export files go; its folder "zender" holds the demonstration station.
  Tour(const Desk& desk, const QString& folder);

  // All of it, in order. Tells what was done, a line each, as it goes.
  void Walk();

  // The time. The moment of the export file's name is the one at which a running export can be seen, so this takes its
  // picture. User-interface thread.
  QDateTime Now();

 private:
  void Arrive();
  void MakeSpotFromFile();
  void MarkMixPoint();
  void TestMixPoint();
  void MakeItems();
  void ChangeSpots();
  void ChangeJingles();
  void ChangeItems();
  void Export();
  void CheckExportFile();
  void GoOnline();
  void ReadHelp();
  void LookInTheDark();
  // Opens a record and leaves it as it is.
  void LookAt(const QString& list, const QString& line, const QString& editor);
  void Leave();

  // The export files so far, oldest first; each is copied beside the pictures.
  QStringList ExportFiles() const;
  QByteArray ContentOf(const QString& exportFile) const;
  // A list that was just opened.
  void OpenList(const QString& action, const QString& list);
  // Once the counts of the day are complete.
  void PictureOfMain();
  void Picture(const QString& window);
  QString NextName(const QString& window);
  void ExpectLogged(const QString& text) const;

  const Desk& desk_;
  QString folder_;
  Planner planner_;
  std::atomic<int> pictures_ = 0;
  bool dark_ = false;
  bool exportSeen_ = false;  // user-interface thread
};
