// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

// The picture on the progress panel: from the station to the file, with a row of dots between them that fills step by
// step. Painted in the palette's colours.
class ExportDrawing : public QWidget {
  Q_OBJECT

 public:
  explicit ExportDrawing(QWidget* parent = nullptr);

  // How far the work is: 0 nothing yet, 1 done.
  void SetProgress(double progress);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  double progress_ = 0;
};
