// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include <memory>

class frmHandleiding;

// Shows the manual in a window of its own, from the menu and with F1 in any window. It stays usable while modal windows
// are open.
class ManualOpener : public QObject {
  Q_OBJECT

 public:
  ManualOpener();
  ~ManualOpener() override;

  // Opens the manual or brings it to the front, at the section of the window in use, if there is one for it.
  void Open();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void PutAboveModalWindow();

  std::unique_ptr<frmHandleiding> manual_;
};
