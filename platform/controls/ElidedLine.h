// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>

namespace controls {

// A line of plain text that is elided when it does not fit, or with wordWrap continues on a next line; it never forces
// the window to be wider.
class ElidedLine : public QLabel {
  Q_OBJECT
  Q_PROPERTY(Qt::TextElideMode elideMode READ ElideMode WRITE SetElideMode)

 public:
  explicit ElidedLine(QWidget* parent = nullptr);

  // Position of the ellipsis; at the end by default.
  Qt::TextElideMode ElideMode() const { return elideMode_; }
  void SetElideMode(Qt::TextElideMode mode);

  QSize minimumSizeHint() const override;

 protected:
  virtual QColor Colour() const;
  void paintEvent(QPaintEvent* event) override;

 private:
  Qt::TextElideMode elideMode_ = Qt::ElideRight;
};

}  // namespace controls
