// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

namespace controls {

// A number in yellow seven-segment digits on black, with unlit segments visible. Values are clamped to the range.
class LedPanel : public QWidget {
  Q_OBJECT
  Q_PROPERTY(int digits READ Digits WRITE SetDigits)
  Q_PROPERTY(int digitHeight READ DigitHeight WRITE SetDigitHeight)
  Q_PROPERTY(int minimum READ Minimum WRITE SetMinimum)
  Q_PROPERTY(int maximum READ Maximum WRITE SetMaximum)
  Q_PROPERTY(int value READ Value WRITE SetValue NOTIFY valueChanged USER true)
  Q_PROPERTY(bool leadingZeros READ HasLeadingZeros WRITE SetLeadingZeros)
  Q_PROPERTY(bool ground READ HasGround WRITE SetGround)

 public:
  explicit LedPanel(QWidget* parent = nullptr);

  int Value() const { return value_; }
  // Emits valueChanged() if the clamped value differs from the current one.
  void SetValue(int value);
  int Minimum() const { return minimum_; }
  void SetMinimum(int minimum);
  int Maximum() const { return maximum_; }
  void SetMaximum(int maximum);
  int Digits() const { return digits_; }
  void SetDigits(int digits);  // 1 to 9
  int DigitHeight() const { return digitHeight_; }
  void SetDigitHeight(int height);  // logical pixels; all other sizes follow from it
  bool HasLeadingZeros() const { return leadingZeros_; }
  void SetLeadingZeros(bool leadingZeros);
  // Whether the panel paints its own background and border; false for a panel on an InstrumentGround.
  bool HasGround() const { return ground_; }
  void SetGround(bool ground);

  // The digits as shown; unlit places are blanks.
  QString Shown() const;

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 Q_SIGNALS:
  void valueChanged(int value);
  // A click with the left button, or Enter or Space while it has the focus.
  void clicked();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

  // The area of the digits; subclasses may use the rest.
  virtual QRect DigitArea() const { return rect(); }
  int Padding() const;

 private:
  void SizesChanged();
  QPointF DigitsPlace() const;
  void UpdateDigits(const QString& before);

  int digits_ = 2;
  int digitHeight_ = 32;
  int minimum_ = 0;
  int maximum_ = 100;
  int value_ = 0;
  bool leadingZeros_ = true;
  bool ground_ = true;
};

}  // namespace controls
