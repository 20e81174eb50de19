// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

namespace controls {

// The scale below level meters: 11 ticks, one per 6 dB, each fifth longer and numbered. `inset` is the distance, in
// logical pixels, from the widget's edges to the first and last tick.
class LevelScale : public QWidget {
  Q_OBJECT
  Q_PROPERTY(int inset READ Inset WRITE SetInset)

 public:
  explicit LevelScale(QWidget* parent = nullptr);

  int Inset() const { return inset_; }
  void SetInset(int inset);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QFont ScaleFont() const;

  int inset_ = 6;
};

}  // namespace controls
