// SPDX-License-Identifier: MIT
#include "tests/journeys/Journey.h"

#include "app/Start.h"
#include "app/frmMain.h"
#include "data/Globals.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/HostPath.h"
#include "tools/Commands.h"

#include <QApplication>
#include <QDir>
#include <QThread>

#include <iostream>
#include <memory>

using namespace Qt::StringLiterals;

void MakeStation(const QString& folder) {
  QDir(folder).removeRecursively();
  if (RunCommand({u"demo"_s, folder}, {std::cout, std::cerr}) != kDone) {
    throw runtime::Error(u"kan de zender niet maken"_s);
  }
}

void RunJourney(const QString& stationFolder, const std::function<void()>& walk) {
  global.programFolder = runtime::PathText(stationFolder);
  RegisterScreens();
  const std::unique_ptr<QThread> hands(QThread::create([&walk] {
    try {
      walk();
    } catch (const std::exception& failure) {
      std::cout << "FOUT  " << failure.what() << std::endl;
      std::_Exit(kFailed);
    }
  }));
  QApplication::setQuitOnLastWindowClosed(false);
  QObject::connect(hands.get(), &QThread::finished, qApp, &QCoreApplication::quit);
  hands->start();
  const std::unique_ptr<frmMain> main = Start();
  QApplication::exec();
  hands->wait();
}
