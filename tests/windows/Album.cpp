// SPDX-License-Identifier: MIT
#include "tests/windows/Album.h"

#include "app/WindowPlaces.h"
#include "platform/runtime/Error.h"

#include <QApplication>
#include <QImage>
#include <QPixmap>
#include <QScreen>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace windows {
namespace {

constexpr int kMaxLooks = 20;  // after this many checks the picture is taken even if the window still changes
constexpr int kCalm = 150;     // ms between two checks
constexpr int kDelay = 200;    // ms until a modal window is shown
constexpr double kLarger = 1.35;

}  // namespace

void Album::Save(const QString& name, QWidget& window) const {
  QImage now;
  for (int look = 0; look < kMaxLooks; ++look) {
    QTest::qWait(kCalm);
    const QImage before = std::exchange(now, window.grab().toImage());
    if (now == before) break;
  }
  const QString path = folder_ + u'/' + name + u".png"_s;
  if (!now.save(path)) throw runtime::Error(u"kan %1 niet schrijven"_s.arg(path));
}

void Album::Take(const QString& name, QWidget& window, const std::function<void()>& prepare) const {
  const QTemporaryDir nothing;  // no window positions are remembered between pictures
  const WindowPlaces places(nothing.filePath(u"vensters.ini"_s));
  window.show();
  window.activateWindow();
  if (!QTest::qWaitForWindowActive(&window)) throw runtime::Error(u"%1 werd niet actief"_s.arg(name));
  if (prepare) prepare();
  Save(name, window);
  const QSize opened = window.size();
  const auto saveAs = [&](const QString& suffix, const QSize& size) {
    window.resize(size);
    if (window.size() != opened) Save(name + suffix, window);
  };
  saveAs(u"-groot"_s, (opened * kLarger).boundedTo(window.screen()->availableSize()));
  saveAs(u"-klein"_s, {1, 1});
  window.hide();
}

void Album::TakeOpened(const QString& name, const std::function<void()>& open) const {
  QTimer::singleShot(kDelay, qApp, [&] {
    QWidget* window = QApplication::activePopupWidget();
    if (window == nullptr) window = QApplication::activeModalWidget();
    if (window == nullptr) throw runtime::Error(u"%1 ging niet open"_s.arg(name));
    Save(name, *window);
    window->close();
  });
  open();
}

}  // namespace windows
