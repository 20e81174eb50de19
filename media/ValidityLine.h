#pragma once
#include "media/SpotValidity.h"

#include <QWidget>

// A state's mark with its word behind it; empty while there is nothing to say.
class ValidityLine : public QWidget {
  Q_OBJECT
  Q_PROPERTY(QString text READ Text)

 public:
  explicit ValidityLine(QWidget* parent = nullptr);

  void Show(const ValidityRemark& remark);
  const ValidityRemark& Remark() const { return remark_; }
  QString Text() const { return remark_.word; }

  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  ValidityRemark remark_;
};
