// SPDX-License-Identifier: MIT
#include "tests/support/Drop.h"

#include <QCoreApplication>
#include <QDropEvent>
#include <QMouseEvent>
#include <QTimer>
#include <QUrl>
#include <QWindow>

#include <utility>

namespace testing_support {

bool DropOn(QWidget& target, const QMimeData& data) {
  QWindow* window = target.window()->windowHandle();
  const QPoint place = target.mapTo(target.window(), target.rect().center());
  QDragEnterEvent enter(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(window, &enter);
  QDragMoveEvent move(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(window, &move);
  QDropEvent drop(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  drop.ignore();
  if (move.isAccepted()) QCoreApplication::sendEvent(window, &drop);
  QCoreApplication::processEvents();
  return move.isAccepted() && drop.isAccepted();
}

namespace {

void Send(QWidget& target, QEvent::Type type, QPoint at, Qt::MouseButtons held) {
  const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
  QMouseEvent event(type, at, target.mapToGlobal(at), button, held, Qt::NoModifier);
  QCoreApplication::sendEvent(&target, &event);
}

}  // namespace

// The drag has its own event loop from its first move to its end: the release must be queued for that loop.
void Drag(QWidget& target, QPoint from, QPoint to) {
  Send(target, QEvent::MouseButtonPress, from, Qt::LeftButton);
  bool ended = false;
  const auto end = [&] {
    if (std::exchange(ended, true)) return;
    Send(target, QEvent::MouseMove, to, Qt::LeftButton);
    Send(target, QEvent::MouseButtonRelease, to, Qt::NoButton);
  };
  QTimer::singleShot(0, &target, end);
  const QPoint step = (to - from) / 2;
  Send(target, QEvent::MouseMove, from + step, Qt::LeftButton);
  Send(target, QEvent::MouseMove, to, Qt::LeftButton);
  end();
  QCoreApplication::processEvents();
}

bool DropFilesOn(QWidget& target, const QStringList& files) {
  QList<QUrl> urls;
  QStringList addresses;
  for (const QString& file : files) {
    urls += QUrl::fromLocalFile(file);
    addresses += urls.last().toString();
  }
  QMimeData data;
  data.setUrls(urls);
  data.setText(addresses.join(u'\n'));  // as file managers do
  return DropOn(target, data);
}

}  // namespace testing_support
