#pragma once
#include "tests/journeys/Desk.h"

#include <QString>
#include <QStringList>

// The main job, walked through the real windows as a user would: choose the station, work offline, make an item-spot
// from an audio file, change and deactivate others, export. Each part checks what it did; StepFailed tells what went
// wrong.
class Tour {
 public:
  // `folder`: where pictures and the export file go; its folder "zender" holds the demo station.
  Tour(const Desk& desk, const QString& folder) : desk_(desk), folder_(folder) {}

  // All of it, in order.
  void Walk();

  // What was done, a line each.
  const QStringList& Summary() const { return summary_; }

 private:
  void ChooseStation();
  void GoOffline();
  void MakeSpotFromFile();
  void MarkMixPoint();
  void TestMixPoint();
  void ChangeSpots();
  void MakeItem();
  void AddSpotToItem(const QString& spot);
  void LookAtJingle(const QString& jingle);
  void Export();
  void CheckExportFile();
  void GoOnline();
  void LookInTheDark();
  void Leave();

  // Once the counts of the day are complete.
  void PictureOfMain(const QString& name);

  void Done(const QString& what) { summary_ += what; }

  const Desk& desk_;
  QString folder_;
  QStringList summary_;
};
