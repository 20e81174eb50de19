// SPDX-License-Identifier: MIT
#pragma once

#include "tests/journeys/Desk.h"
#include "tests/journeys/Planner.h"

#include <QDateTime>
#include <QString>

#include <atomic>

// The tour: a complete day through the real windows, with a picture of every screen. Online a spot and an item of each
// kind are made; offline follow changes, an export, and the return to online mode with the export that it requires.
// Each part checks its result; StepFailed says what went wrong.
class Tour {
 public:
  // `folder`: for pictures and export files; its folder "zender" holds the demonstration station.
  Tour(const Desk& desk, const QString& folder);

  // All parts in order. Prints a line for each.
  void Walk();

  // The clock. The name of the export file is made from the time while the export is running, so this also takes the
  // picture of a running export. User-interface thread.
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
  void LookAtWhatWaits();
  void Export();
  void CheckExportFile();
  void GoOnline();
  void ReadHelp();
  // Opens a window, takes its picture and closes it.
  void Visit(const QString& action, const QString& window);
  void LookAhead();
  void LookInTheDark();
  // Opens a record and closes it unchanged.
  void LookAt(const QString& list, const QString& line, const QString& editor);
  void Leave();

  // The export files so far, oldest first; each is also copied to the pictures.
  QStringList ExportFiles() const;
  QByteArray ContentOf(const QString& exportFile) const;
  // A list that has just been opened.
  void OpenList(const QString& action, const QString& list);
  // Waits until the counts of the day are complete.
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
