// SPDX-License-Identifier: MIT
#pragma once

#include "platform/controls/InstrumentGround.h"

#include <QString>

namespace controls {

class LedPanel;

// The ground that LED panels of a time share: minutes, seconds, milliseconds, or a clock. It lays its LedPanel children
// out from left to right in the order in which they were added, and draws the signs (':' or '.') between them.
class LedClockGround : public InstrumentGround {
  Q_OBJECT
  Q_PROPERTY(QString separators READ Separators WRITE SetSeparators)

 public:
  explicit LedClockGround(QWidget* parent = nullptr);

  // One sign for each gap; ":." at first.
  QString Separators() const { return separators_; }
  void SetSeparators(const QString& separators);

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
