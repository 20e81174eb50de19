// SPDX-License-Identifier: MIT
#pragma once

#include "data/forms/RecordEdits.h"

#include <QDate>
#include <QList>
#include <QObject>
#include <QString>

#include <functional>
#include <optional>
#include <vector>

class OverviewBar;

namespace controls {
class ListBox;
}

// The actions on all marked lines of an overview list, and undoing a deactivation. Records are changed one by one; the
// first that fails ends an action. Its result is shown below the list, and the changed lines are marked lightly.
class OverviewActions : public QObject {
  Q_OBJECT

 public:
  struct Subject {
    RecordKind kind;
    QString one;   // "item-spot"
    QString many;  // "item-spots"
  };
  // `refill` fills the list again. `window` becomes the owner.
  OverviewActions(const Subject& subject, controls::ListBox& list, OverviewBar& bar, std::function<void()> refill,
                  QWidget* window);

  // Shows the number of marked lines.
  void UpdateMarked();
  // Removes the result of the previous action.
  void Forget();
  // Before and after the list's own button deactivated a line.
  std::optional<qint32> AktiefNow(qint32 id) const;
  void Deactivated(qint32 id, const QString& naam, std::optional<qint32> before, bool written);
  // Marks the lines of these records lightly.
  void ShowEdited(const QList<qint32>& ids);

 private:
  struct Marked {
    qint32 id = 0;
    QString naam;
  };
  struct Former {
    qint32 id = 0;
    QString naam;
    qint32 aktief = 0;
  };
  struct Tally {
    int asked = 0;
    int written = 0;
    int same = 0;
    QStringList gone;
    QStringList refused;
    QList<qint32> ids;  // of the written records
  };
  using Edit = std::function<EditOutcome(const Marked& line)>;

  void cmdDesaktiveerAlle_Click();
  void cmdEinddatum_Click();
  void cmdUren_Click();
  void cmdDupliceren_Click();
  void cmdOngedaan_Click();

  std::vector<Marked> MarkedLines() const;
  // Changes the lines one after another, with a window that counts and can stop it. Errors are those of `procedure`.
  Tally Run(const char* procedure, const QString& doing, const std::vector<Marked>& lines, const Edit& edit);
  // Fills the list again and shows what was done: "Einddatum 31-12-2026 bij 20 item-spots".
  void Finish(const Tally& tally, const QString& done, bool canUndo = false);
  QString Count(qsizetype count) const;
  QString Remarks(const Tally& tally) const;

  Subject subject_;
  controls::ListBox& list_;
  OverviewBar& bar_;
  std::function<void()> refill_;
  QWidget* window_;
  std::vector<Former> undo_;
};
