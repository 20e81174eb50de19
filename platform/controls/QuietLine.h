#pragma once
#include <QLabel>

namespace controls {

// A quiet line of text, such as the count below a list. It gives way first when the window is narrow: what does not fit
// ends in an ellipsis.
class QuietLine : public QLabel {
  Q_OBJECT

 public:
  explicit QuietLine(QWidget* parent = nullptr);

  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace controls
