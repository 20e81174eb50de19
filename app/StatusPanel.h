// SPDX-License-Identifier: MIT
#pragma once

#include "platform/desktop/Icons.h"

#include <QWidget>

// One field of the status bar: an icon and a text, followed by a hairline.
class StatusPanel : public QWidget {
  Q_OBJECT

 public:
  explicit StatusPanel(QWidget* parent = nullptr);

  // Warning has another colour and bold text. The tool tip is the text, followed by `details`.
  void Show(const QString& icon, const QString& text, desktop::IconTint tint = desktop::IconTint::Text,
            const QString& details = {});
  const QString& Text() const { return text_; }

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QFont TextFont() const;
  QColor Colour() const;

  QString icon_;
  QString text_;
  desktop::IconTint tint_ = desktop::IconTint::Text;
};
