// SPDX-License-Identifier: MIT
#include "platform/desktop/FileDrop.h"

#include <QApplication>
#include <QDropEvent>
#include <QMimeData>
#include <QTimer>
#include <QUrl>
#include <QWidget>

#include <utility>

namespace desktop {

FileDrop::FileDrop(QWidget* window) : QObject(window), window_(window) {
  window->setAcceptDrops(true);
  window->installEventFilter(this);
  // Filtered before the fields get the event: a text field would insert the files' URLs as text.
  for (QWidget* child : window->findChildren<QWidget*>())
    child->installEventFilter(this);
}

bool FileDrop::eventFilter(QObject* watched, QEvent* event) {
  const QEvent::Type type = event->type();
  if (type == QEvent::DragLeave) SetHovering(false);
  if (type != QEvent::DragEnter && type != QEvent::DragMove && type != QEvent::Drop) {
    return QObject::eventFilter(watched, event);
  }
  auto& drop = static_cast<QDropEvent&>(*event);
  if (!drop.mimeData()->hasUrls()) return QObject::eventFilter(watched, event);
  if (!AcceptsDrops()) {
    drop.ignore();
    return true;
  }
  drop.setDropAction(Qt::CopyAction);  // the source must not delete the files
  drop.accept();
  SetHovering(type != QEvent::Drop);
  if (type == QEvent::Drop) Drop(*drop.mimeData());
  return true;
}

void FileDrop::SetHovering(bool over) {
  if (over == std::exchange(hovering_, over)) return;
  Q_EMIT hovering(over);
}

bool FileDrop::AcceptsDrops() const {
  const QWidget* modal = QApplication::activeModalWidget();
  return modal == nullptr || modal == window_;
}

void FileDrop::Drop(const QMimeData& data) {
  QStringList files;
  for (const QUrl& url : data.urls())
    files += url.isLocalFile() ? url.toLocalFile() : url.toString();
  QTimer::singleShot(0, this, [this, files] { Q_EMIT dropped(files); });
}

}  // namespace desktop
