// SPDX-License-Identifier: MIT
#pragma once

#include <QDate>
#include <QLineEdit>

#include <optional>

class QAction;

namespace controls {

// A date from 01-01-0100 to 31-12-9999, or nothing. The user types it (dd-mm-yyyy; / and . serve as well) or picks it
// from a calendar (Alt+Down, F4 or the icon). The text may be anything while typing; leaving the field writes a date in
// full. Listen to textChanged: it fires for every change, by hand or by program.
class DateCombo : public QLineEdit {
  Q_OBJECT

 public:
  explicit DateCombo(QWidget* parent = nullptr);

  QString Text() const { return text(); }
  void SetText(const QString& dateText) { setText(dateText); }
  bool HoldsDate() const { return Date().has_value(); }
  std::optional<QDate> Date() const;
  // No value empties the field.
  void SetDate(std::optional<QDate> date);

  // Opens the calendar; nothing while locked or disabled.
  void OpenCalendar();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  QAction* calendarAction_;
};

}  // namespace controls
