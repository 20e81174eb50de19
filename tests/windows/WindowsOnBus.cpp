// SPDX-License-Identifier: MIT
// Shows one window after the other, for a screen reader on the accessibility bus: the name of the present window on the
// standard output, the next one for each line on the standard input.
#include "platform/desktop/LookStyle.h"
#include "platform/desktop/Palettes.h"
#include "tests/support/Station.h"
#include "tests/windows/FilledStation.h"
#include "tests/windows/Windows.h"

#include <QApplication>
#include <QSocketNotifier>

#include <cstdio>
#include <iostream>
#include <memory>
#include <string>

using testing_support::Station;

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QApplication::setApplicationName(QStringLiteral("windows_on_bus"));
  QApplication::setStyle(new desktop::LookStyle);
  QApplication::setPalette(desktop::LightPalette());
  QApplication::setQuitOnLastWindowClosed(false);
  const Station station;
  windows::FillStation(station);
  const QList<windows::Opening> all = windows::All(windows::kFilledRecords);
  qsizetype at = 0;
  std::unique_ptr<windows::Window> shown;
  const auto showNext = [&] {
    shown.reset();
    if (at == all.size()) return QApplication::quit();
    shown = std::make_unique<windows::Window>(all[at].open());
    shown->Widget().show();
    shown->Widget().activateWindow();
    std::cout << all[at].name.toStdString() << std::endl;
    ++at;
  };
  const QSocketNotifier commands(fileno(stdin), QSocketNotifier::Read);
  QObject::connect(&commands, &QSocketNotifier::activated, [&] {
    std::string line;
    if (!std::getline(std::cin, line)) return QApplication::quit();
    showNext();
  });
  return QApplication::exec();
}
