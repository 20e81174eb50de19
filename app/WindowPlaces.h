// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QSettings>

class QWidget;

// Remembers size and place of the program's windows (those named "frm..."), for each user in a file of its own. A
// window never opens larger than the free area of its screen, and one that was left elsewhere comes back into it.
// None gets smaller than half of the size it opens with. Watches the whole application while it lives.
class WindowPlaces : public QObject {
  Q_OBJECT

 public:
  // `file`: host path; made when missing. Without write permission nothing is remembered, and nothing else happens.
  explicit WindowPlaces(const QString& file);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Restore(QWidget& window);

  QSettings places_;
};
