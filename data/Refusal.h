// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <optional>

// Why an editor's input cannot be saved.
struct Refusal {
  int message = 0;  // number in table appMessages
  QString value1;   // for %1 and %2 in the message
  QString value2;
  QString control;  // object name of the control that gets the focus; empty: the focus is not moved

  bool operator==(const Refusal&) const = default;
};

// A required text of at most `longest` characters, blanks included. `label`: the field's name in the message.
std::optional<Refusal> CheckText(const QString& text, const QString& label, int longest, const QString& control);
