// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include <memory>

namespace Ui {
class frmSplash;
}

// The splash screen: name, version, and the current step of the start-up. Always dark. Any key closes it.
class frmSplash : public QWidget {
  Q_OBJECT

 public:
  frmSplash();
  ~frmSplash() override;

  // Shows the next step of the start-up; painted immediately.
  void ShowStep(const QString& text);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void InitTexts();

  std::unique_ptr<Ui::frmSplash> ui_;
};
