#include "app/WindowPlaces.h"

#include <QApplication>
#include <QEvent>
#include <QScreen>
#include <QStandardPaths>
#include <QWidget>

using namespace Qt::StringLiterals;

namespace {

bool IsOurs(const QWidget& window) {
  return window.isWindow() && window.objectName().startsWith(u"frm"_s) && window.objectName() != u"frmSplash"_s;
}

}  // namespace

WindowPlaces::WindowPlaces(const QString& file) : places_(file, QSettings::IniFormat) {
  QApplication::instance()->installEventFilter(this);
}

QString WindowPlaces::UserFile() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + u"/spotrooster/vensters.ini"_s;
}

bool WindowPlaces::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::Show && event->type() != QEvent::Hide) return false;
  auto* window = qobject_cast<QWidget*>(watched);
  if (window == nullptr || event->spontaneous() || !IsOurs(*window)) return false;
  if (event->type() == QEvent::Show) {
    Restore(*window);
  } else {
    places_.setValue(window->objectName(), window->saveGeometry());
  }
  return false;
}

void WindowPlaces::Restore(QWidget& window) {
  const QByteArray place = places_.value(window.objectName()).toByteArray();
  if (!place.isEmpty()) window.restoreGeometry(place);
  const QSize free = window.screen()->availableSize();
  if (window.width() > free.width() || window.height() > free.height()) window.resize(window.size().boundedTo(free));
}
