#include "tests/support/Drop.h"

#include <QCoreApplication>
#include <QDropEvent>
#include <QUrl>
#include <QWindow>

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
