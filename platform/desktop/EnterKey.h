// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

class QApplication;

namespace desktop {

// Makes Enter press the focused button on every desktop. Qt leaves that to the platform; without it, Enter on
// "Annuleren" could trigger OK. On a button with the property "danger", Enter triggers the window's default button
// instead. Create one in main() that lives as long as the application.
class EnterKey : public QObject {
  Q_OBJECT

 public:
  explicit EnterKey(QApplication& application);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace desktop
