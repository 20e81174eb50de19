// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QStringList>

class QDropEvent;
class QMimeData;

namespace desktop {

// Accepts files dropped anywhere on a window, including its fields. Other drags are handled as usual. A window blocked
// by a modal one accepts nothing. Owned by the window. User-interface thread only.
class FileDrop : public QObject {
  Q_OBJECT

 public:
  // Create it after the window's controls.
  explicit FileDrop(QWidget* window);

 Q_SIGNALS:
  // Host paths in the order of the drop; for a non-local file its URL. Emitted through the event loop, because the
  // program where the drag started waits until the drop has ended.
  void dropped(const QStringList& files);
  // Files that may be dropped here are dragged over the window, or no longer.
  void hovering(bool over);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool AcceptsDrops() const;
  void Drop(const QMimeData& data);
  void SetHovering(bool over);

  QWidget* window_;
  bool hovering_ = false;
};

}  // namespace desktop
