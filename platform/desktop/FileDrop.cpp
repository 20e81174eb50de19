// SPDX-License-Identifier: MIT
#include "platform/desktop/FileDrop.h"

#include <QApplication>
#include <QDropEvent>
#include <QMimeData>
#include <QTimer>
#include <QUrl>
#include <QWidget>

namespace desktop {

FileDrop::FileDrop(QWidget* window) : QObject(window), window_(window) {
  window->setAcceptDrops(true);
  window->installEventFilter(this);
  // A text field takes the addresses of files for text to insert, unless they are taken before it sees them.
  for (QWidget* child : window->findChildren<QWidget*>())
    child->installEventFilter(this);
}

bool FileDrop::eventFilter(QObject* watched, QEvent* event) {
  const QEvent::Type type = event->type();
  if (type != QEvent::DragEnter && type != QEvent::DragMove && type != QEvent::Drop) {
    return QObject::eventFilter(watched, event);
  }
  auto& drop = static_cast<QDropEvent&>(*event);
  if (!drop.mimeData()->hasUrls()) return QObject::eventFilter(watched, event);
  if (!TakesNow()) {
    drop.ignore();
    return true;
  }
  drop.setDropAction(Qt::CopyAction);  // the files stay where they are
  drop.accept();
  if (type == QEvent::Drop) Take(*drop.mimeData());
  return true;
}

bool FileDrop::TakesNow() const {
  const QWidget* modal = QApplication::activeModalWidget();
  return modal == nullptr || modal == window_;
}

void FileDrop::Take(const QMimeData& data) {
  QStringList files;
  for (const QUrl& url : data.urls())
    files += url.isLocalFile() ? url.toLocalFile() : url.toString();
  QTimer::singleShot(0, this, [this, files] { Q_EMIT dropped(files); });
}

}  // namespace desktop
