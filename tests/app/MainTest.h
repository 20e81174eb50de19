// SPDX-License-Identifier: MIT
#pragma once

#include "app/frmMain.h"
#include "data/forms/Screens.h"
#include "tests/support/Station.h"

#include <gtest/gtest.h>

#include <functional>

class QAction;

// A station as start-up finds it: a settings file, and nothing in `global` but the program's folder. Every screen has a
// stand-in that notes that it was opened.
class MainTest : public testing::Test {
 protected:
  MainTest();
  ~MainTest() override;

  // Loads the window; in the station selection the line of that name is chosen, or the selection closed when empty.
  static void Load(frmMain& main, const QString& station);

  static QAction& Action(const frmMain& main, const QString& name);
  static void PressTool(const frmMain& main, const QString& name);
  static QString Panel(const frmMain& main, const QString& name);

  testing_support::Station station_{testing_support::Station::Mode::Online};
  QList<Screen> opened_;
  QWidget* owner_ = nullptr;
  std::function<void()> whenOpened_;
};
