// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QStringList>

class QDropEvent;
class QMimeData;

namespace desktop {

// Files dropped anywhere on a window, fields included. Everything else that is dragged goes its usual way, and a window
// that waits for another one takes nothing. The window owns it. User-interface thread only.
class FileDrop : public QObject {
  Q_OBJECT

 public:
  // To be called once the window's controls exist.
  explicit FileDrop(QWidget* window);

 Q_SIGNALS:
  // Host paths in the order in which they were dropped; what is no file of this host comes as its address. Arrives
  // through the event loop: the program that the files come from waits for the end of the drop itself.
  void dropped(const QStringList& files);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool TakesNow() const;
  void Take(const QMimeData& data);

  QWidget* window_;
};

}  // namespace desktop
