#pragma once
#include <QLabel>

// The quiet line below a list. It gives way first when the window is narrow: what does not fit ends in an ellipsis.
class CountLine : public QLabel {
  Q_OBJECT

 public:
  explicit CountLine(QWidget* parent = nullptr);

  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
};
