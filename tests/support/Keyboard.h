// SPDX-License-Identifier: MIT
#pragma once

#include <QTest>
#include <QWidget>

namespace testing_support {

// Presses keys in a control and counts them; a key with Shift, Ctrl or Alt is one.
class Keyboard {
 public:
  void Press(QWidget& control, Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(&control, key, modifiers);
    ++count_;
  }
  void Type(QWidget& control, const QString& text) {
    QTest::keyClicks(&control, text);
    count_ += static_cast<int>(text.size());
  }
  int Count() const { return count_; }

 private:
  int count_ = 0;
};

}  // namespace testing_support
