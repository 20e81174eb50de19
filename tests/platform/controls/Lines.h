// SPDX-License-Identifier: MIT
#pragma once

#include "platform/controls/ListBox.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

// A list of four lines on the screen, watched.
class Lines : public testing::Test {
 protected:
  Lines();

  void Click(int row, Qt::KeyboardModifiers keys = Qt::NoModifier);
  // A move of the pointer with that button held down.
  void MoveHolding(Qt::MouseButton button, QPoint to);
  QPoint Middle(int row);

  controls::ListBox list;
  QSignalSpy clicked;
  QSignalSpy lost;
};
