// SPDX-License-Identifier: MIT
#pragma once

#include <QDate>
#include <QFrame>

class QCalendarWidget;

namespace controls {

// A calendar below a field, to pick a day from. Deletes itself when closed.
class CalendarPopup : public QFrame {
  Q_OBJECT

 public:
  CalendarPopup(QWidget* field, const QDate& shown);

  // Opens below the field, or above it if there is no room below.
  void Open();

 Q_SIGNALS:
  void picked(const QDate& date);

 private:
  void SetArrow(const QString& button, const QString& icon);

  QWidget* field_;
  QCalendarWidget* calendar_;
};

}  // namespace controls
