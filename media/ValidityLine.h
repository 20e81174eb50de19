// SPDX-License-Identifier: MIT
#pragma once

#include "platform/controls/ListLine.h"

#include <QWidget>

// A state's mark followed by its text, wrapped to two lines if necessary; empty for an empty text.
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
