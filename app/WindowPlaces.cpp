// SPDX-License-Identifier: MIT
#include "app/WindowPlaces.h"

#include <QApplication>
#include <QEvent>
#include <QScreen>
#include <QStyle>
#include <QTimer>
#include <QWidget>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

bool IsOurs(const QWidget& window) {
  return window.isWindow() && window.objectName().startsWith(u"frm"_s) && window.objectName() != u"frmSplash"_s;
}

// Moves the window including its frame into the available area: a screen may have been removed or made smaller since,
// and a title bar outside the screen cannot be dragged.
void BringInside(QWidget& window) {
  const QRect free = window.screen()->availableGeometry();
  QRect frame = window.frameGeometry();
  frame.moveRight(std::min(frame.right(), free.right()));
  frame.moveBottom(std::min(frame.bottom(), free.bottom()));
  frame.moveLeft(std::max(frame.left(), free.left()));
  frame.moveTop(std::max(frame.top(), free.top()));
  if (frame.topLeft() != window.frameGeometry().topLeft()) window.move(frame.topLeft());
}

// The frame that the desktop adds. Until a window is shown its own is not known; that of an earlier window is the same.
QSize FrameOf(const QWidget& window) {
  static QSize last(0, window.style()->pixelMetric(QStyle::PM_TitleBarHeight));
  if (window.windowFlags().testFlag(Qt::FramelessWindowHint)) return {0, 0};
  const QSize own = window.frameGeometry().size() - window.size();
  if (!own.isEmpty() || own.height() > 0) last = own;
  return last;
}

void KeepWithinScreen(QWidget& window) {
  const QSize free = window.screen()->availableSize() - FrameOf(window);
  if (window.width() > free.width() || window.height() > free.height()) window.resize(window.size().boundedTo(free));
}

void KeepFrameInside(QWidget& window) {
  if (!window.isVisible() || window.isMaximized() || window.isFullScreen()) return;
  KeepWithinScreen(window);
  BringInside(window);
}

// Below half of its designed size a window is not usable; its layout alone would allow less, since lists and scrolling
// pages shrink to nothing. Set once: when shown again the window has the size that the user chose.
void SetSmallest(QWidget& window) {
  constexpr const char* kSet = "smallestSet";
  if (window.property(kSet).toBool()) return;
  window.setProperty(kSet, true);
  const QSize smallest = (window.size() / 2).expandedTo(window.minimumSizeHint()).expandedTo(window.minimumSize());
  window.setMinimumSize(smallest);
}

}  // namespace

WindowPlaces::WindowPlaces(const QString& file) : places_(file, QSettings::IniFormat) {
  QApplication::instance()->installEventFilter(this);
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
  KeepWithinScreen(window);
  SetSmallest(window);
  const QByteArray place = places_.value(window.objectName()).toByteArray();
  const bool restored = !place.isEmpty() && window.restoreGeometry(place);
  KeepWithinScreen(window);
  if (restored) BringInside(window);  // the desktop places other windows
  // The desktop adds the frame later.
  QTimer::singleShot(0, &window, [&window] { KeepFrameInside(window); });
}
