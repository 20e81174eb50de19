// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

namespace controls {

// A number in yellow seven-segment digits on black. Unlit segments shimmer through. A value outside the range is shown
// as its nearest end.
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
  // Fires valueChanged() only when the shown value changes.
  void SetValue(int value);
  int Minimum() const { return minimum_; }
  void SetMinimum(int minimum);
  int Maximum() const { return maximum_; }
  void SetMaximum(int maximum);
  int Digits() const { return digits_; }
  void SetDigits(int digits);  // 1 to 9
  int DigitHeight() const { return digitHeight_; }
  void SetDigitHeight(int height);  // logical pixels; sets all other measures
  bool HasLeadingZeros() const { return leadingZeros_; }
  void SetLeadingZeros(bool leadingZeros);
  // With a ground the panel paints its own black background and rim; without, it stands on an InstrumentGround.
  bool HasGround() const { return ground_; }
  void SetGround(bool ground);

  // The digits as shown, unlit places as blanks.
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

  // Where the digits stand; the rest belongs to subclasses.
  virtual QRect DigitArea() const { return rect(); }
  int Padding() const;

 private:
  void MeasuresChanged();
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
