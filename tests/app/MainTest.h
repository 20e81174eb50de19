// SPDX-License-Identifier: MIT
#pragma once

#include "app/frmMain.h"
#include "data/forms/Screens.h"
#include "tests/support/Station.h"

#include <gtest/gtest.h>

#include <functional>

class QAction;

// A station before start-up: a settings file, and only the program folder in `global`. Every screen is replaced by a
// fake that records its opening.
class MainTest : public testing::Test {
 protected:
  MainTest();
  ~MainTest() override;

  // Loads the window; chooses that station in the selection, or closes the selection when `station` is empty.
  static void Load(frmMain& main, const QString& station);

  static QAction& Action(const frmMain& main, const QString& name);
  static void PressTool(const frmMain& main, const QString& name);
  static QString Panel(const frmMain& main, const QString& name);

  testing_support::Station station_{testing_support::Station::Mode::Online};
  QList<Screen> opened_;
  QWidget* owner_ = nullptr;
  std::function<void()> whenOpened_;
};
