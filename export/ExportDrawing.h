// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

// The picture on the progress panel: a station and a file with a row of dots between them that fills step by step.
// Painted in the palette's colours.
class ExportDrawing : public QWidget {
  Q_OBJECT

 public:
  explicit ExportDrawing(QWidget* parent = nullptr);

  // 0 (nothing done) to 1 (finished).
  void SetProgress(double progress);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  double progress_ = 0;
};
