// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

namespace controls {
class ElidedLine;
}

// An amber line below a list while offline changes wait for an export, with a button that shows them; otherwise hidden.
class WaitingLine : public QWidget {
  Q_OBJECT

 public:
  explicit WaitingLine(QWidget* parent = nullptr);

  // `note`: what the list shows meanwhile. Without changes the line is hidden.
  void Show(int changes, const QString& note);

 Q_SIGNALS:
  void showAsked();

 private:
  controls::ElidedLine* lblWachten_;
};
