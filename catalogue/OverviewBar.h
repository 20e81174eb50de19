// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class QPushButton;

namespace controls {
class QuietLine;
}

// The row below an overview list: what the last action did, and the actions on all marked lines. Its height does not
// change, so that the list never moves under the mouse.
class OverviewBar : public QWidget {
  Q_OBJECT

 public:
  explicit OverviewBar(QWidget* parent = nullptr);

  // Only the buttons that the list has. Tab goes through them between `before` and `after`.
  void Choose(bool aktief, bool validity, QWidget* before, QWidget* after);

  // "20 gemarkeerd", and the buttons for so many lines. With one line only Dupliceren is there.
  void ShowMarked(int count);
  // What the last action did; until the next call. `canUndo` shows cmdOngedaan.
  void ShowResult(const QString& text, bool canUndo);
  QString Result() const { return result_; }

 Q_SIGNALS:
  void deactivateRequested();
  void eindDatumRequested();
  void urenRequested();
  void duplicateRequested();
  void undoRequested();

 private:
  QPushButton* Add(const QString& name, void (OverviewBar::*signal)());
  void ShowText();

  controls::QuietLine* lblMelding_;
  QPushButton* cmdOngedaan_;
  QPushButton* cmdDesaktiveerAlle_;
  QPushButton* cmdEinddatum_;
  QPushButton* cmdUren_;
  QPushButton* cmdDupliceren_;
  QString result_;
  int marked_ = 0;
  bool hasAktief_ = false;
  bool hasValidity_ = false;
};
