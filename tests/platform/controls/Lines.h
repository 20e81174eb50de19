// SPDX-License-Identifier: MIT
#pragma once

#include "platform/controls/ListBox.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

// Test fixture: a visible list of four lines, with recorded signals.
class Lines : public testing::Test {
 protected:
  Lines();

  void Click(int row, Qt::KeyboardModifiers keys = Qt::NoModifier);
  // Moves the mouse with that button pressed.
  void MoveHolding(Qt::MouseButton button, QPoint to);
  QPoint Middle(int row);

  controls::ListBox list;
  QSignalSpy clicked;
  QSignalSpy lost;
};
