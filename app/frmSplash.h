// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include <memory>

namespace Ui {
class frmSplash;
}

// The splash screen: name, version, and what start-up is doing. Always dark. Any key closes it.
class frmSplash : public QWidget {
  Q_OBJECT

 public:
  frmSplash();
  ~frmSplash() override;

  // Tells what start-up does next; painted at once.
  void ShowStep(const QString& text);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void InitTexts();

  std::unique_ptr<Ui::frmSplash> ui_;
};
