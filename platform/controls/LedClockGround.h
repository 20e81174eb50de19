// SPDX-License-Identifier: MIT
#pragma once

#include "platform/controls/InstrumentGround.h"

#include <QString>

namespace controls {

class LedPanel;

// The shared background of LED panels that show a time. Lays out its LedPanel children from left to right, in the order
// in which they were added, and draws the signs (':' or '.') between them.
class LedClockGround : public InstrumentGround {
  Q_OBJECT
  Q_PROPERTY(QString separators READ Separators WRITE SetSeparators)

 public:
  explicit LedClockGround(QWidget* parent = nullptr);

  // One sign for each gap; ":." by default.
  QString Separators() const { return separators_; }
  void SetSeparators(const QString& separators);

  // The digits and signs as shown: "14:32:07".
  QString Shown() const;

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  bool event(QEvent* event) override;

 private:
  QList<LedPanel*> Panels() const;
  int DigitHeight() const;
  int Gap() const;
  void Arrange();

  QString separators_;
};

}  // namespace controls
