// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

class QApplication;

namespace desktop {

// Enter presses the button that has the focus, on every desktop alike: Qt leaves it to the platform, and where that
// does not, Enter on "Annuleren" would do what OK does. On a button marked "danger" Enter is the window's default, as
// anywhere else in the window. Make one in main(), and keep it.
class EnterKey : public QObject {
  Q_OBJECT

 public:
  explicit EnterKey(QApplication& application);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace desktop
