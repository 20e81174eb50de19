// SPDX-License-Identifier: MIT
#pragma once

#include <QDate>
#include <QLineEdit>

#include <optional>

class QAction;

namespace controls {

// A date from 01-01-0100 to 31-12-9999, or empty. The user types it (dd-mm-yyyy; separators / and . work too) or picks
// it from a calendar (Alt+Down, F4 or the icon). Any text is accepted while typing; when the field loses the focus, a
// date is written as dd-mm-yyyy. Connect to textChanged: it is emitted for changes by the user and by the program.
class DateCombo : public QLineEdit {
  Q_OBJECT

 public:
  explicit DateCombo(QWidget* parent = nullptr);

  QString Text() const { return text(); }
  void SetText(const QString& dateText) { setText(dateText); }
  bool HoldsDate() const { return Date().has_value(); }
  std::optional<QDate> Date() const;
  // nullopt empties the field.
  void SetDate(std::optional<QDate> date);

  // Opens the calendar; no effect while locked or disabled.
  void OpenCalendar();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  QAction* calendarAction_;
};

}  // namespace controls
