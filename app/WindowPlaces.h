// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QSettings>

class QWidget;

// Remembers size and position of the program's windows (named "frm...") in a file per user. A window never opens larger
// than the available area of its screen or outside it, and cannot be made smaller than half of its opening size.
// Watches all windows of the application during its lifetime.
class WindowPlaces : public QObject {
  Q_OBJECT

 public:
  // `file`: host path; created when missing. Without write permission nothing is remembered, without an error.
  explicit WindowPlaces(const QString& file);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Restore(QWidget& window);

  QSettings places_;
};
