// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>

namespace controls {

// A line of text that gives way first when the window is narrow: what does not fit becomes an ellipsis, however long
// the text. Plain text.
class ElidedLine : public QLabel {
  Q_OBJECT
  Q_PROPERTY(Qt::TextElideMode elideMode READ ElideMode WRITE SetElideMode)

 public:
  explicit ElidedLine(QWidget* parent = nullptr);

  // Where the ellipsis stands: at the end unless told otherwise.
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
