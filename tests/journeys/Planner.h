// SPDX-License-Identifier: MIT
#pragma once

#include "tests/journeys/Desk.h"

#include <QDate>
#include <QString>
#include <QStringList>

#include <functional>
#include <utility>

// The names of the windows.
namespace window {
inline const QString kSplash = QStringLiteral("frmSplash");
inline const QString kStation = QStringLiteral("frmRadioDetail");
inline const QString kMain = QStringLiteral("frmMain");
inline const QString kSettings = QStringLiteral("frmDefaults");
inline const QString kSpots = QStringLiteral("frmItemSpots");
inline const QString kSpot = QStringLiteral("frmItemSpotsDetail");
inline const QString kSpotCleanup = QStringLiteral("frmItemSpotOpruimen");
inline const QString kItems = QStringLiteral("frmItems");
inline const QString kItem = QStringLiteral("frmItemsDetail");
inline const QString kEntry = QStringLiteral("frmItemsDetailOpt1");
inline const QString kFolder = QStringLiteral("frmDirectory");
inline const QString kItemCleanup = QStringLiteral("frmItemOpruimen");
inline const QString kJingles = QStringLiteral("frmItemPingles");
inline const QString kJingle = QStringLiteral("frmItemPinglesDetail");
inline const QString kExport = QStringLiteral("frmPlanningExporteren");
inline const QString kManual = QStringLiteral("frmHandleiding");
}  // namespace window

// Input for new records. A sound is a host path; jingles and spots are selected by their names.
struct SpotWork {
  QString sound;
  QString naam;
  QDate first;
  QDate last;
};
struct JingleWork {
  QString sound;
  QString naam;
};
struct BlockWork {
  QString naam;
  int count = 0;  // spots played at a time, if several
  QString opener;
  QString middle;
  QString closer;
};
struct PatternWork {
  QStringList folders;  // from the drive down, as in the tree
  QString fixedPart;
  QString variablePart;
  QString firstDay;  // with "ww" only
  QString extension;
  int mixPoint = 0;  // ms
  int most = 0;      // spots
};

// A planner at work: the tasks of a day, each carried out through the real windows. Tasks on records expect their list
// to be open and leave it open.
class Planner {
 public:
  // Called with the name of each window whose fields are filled, before its OK.
  using Look = std::function<void(const QString& window)>;

  explicit Planner(
      const Desk& desk, Look look = [](const QString&) {})
      : desk_(desk), look_(std::move(look)) {}

  void ChooseStation(const QString& station) const;
  void GoOffline() const;
  // Until the export window that it opens.
  void GoOnline() const;
  // In the export window.
  void StartExport() const;
  void EndExport() const;
  void Leave() const;

  void Open(const QString& action, const QString& list) const;
  void Close(const QString& list) const;

  // `more` runs in the editor with its fields filled.
  void MakeSpot(const SpotWork& work, const std::function<void()>& more = {}) const;
  void ChangeSpotEnd(const QString& spot, QDate last) const;
  void MakeJingle(const JingleWork& work) const;
  void RenameJingle(const QString& jingle, const QString& naam) const;
  void RemoveJingle(const QString& jingle) const;
  void MakeListItem(const BlockWork& work, const QStringList& spots) const;
  void MakePatternItem(const BlockWork& work, const PatternWork& pattern) const;
  void RemoveEntry(const QString& item, const QString& spot) const;
  void Deactivate(const QString& list, const QString& line) const;
  void CleanUp(const QString& list, const QString& line, const QStringList& boxes) const;

  // Opens a record by a double-click.
  void Edit(const QString& list, const QString& line, const QString& editor) const;
  // Waits until the list below another window was filled again.
  void WaitForRefill(const QString& list) const;

 private:
  void Save(const QString& editor) const;
  void Check(const QString& window, const QString& box) const;
  void TakeSound(const QString& editor, const QString& sound) const;
  void ChooseFolder(const QStringList& folders) const;
  void FillBlock(const BlockWork& work) const;
  void FillMixPoint(int mixPoint) const;

  const Desk& desk_;
  Look look_;
};
