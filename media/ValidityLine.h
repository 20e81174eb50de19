// SPDX-License-Identifier: MIT
#pragma once

#include "platform/controls/ListLine.h"

#include <QWidget>

// A state's mark with its word behind it, on two lines where one is too short; empty while there is nothing to say.
class ValidityLine : public QWidget {
  Q_OBJECT
  Q_PROPERTY(QString text READ Text)

 public:
  explicit ValidityLine(QWidget* parent = nullptr);

  void Show(const controls::LineDetails& remark);
  const controls::LineDetails& Remark() const { return remark_; }
  QString Text() const { return remark_.word; }

  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  controls::LineDetails remark_;
};
