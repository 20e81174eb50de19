// SPDX-License-Identifier: MIT
#pragma once

#include <QRadioButton>

#include <functional>

// Calls the handler when the option button becomes checked, by the user or by the program, and when the user clicks it
// while it is already checked. Never when it becomes unchecked.
inline void OnOptionClick(QRadioButton* button, const std::function<void()>& handler) {
  QObject::connect(button, &QRadioButton::toggled, button, [button, handler](bool chosen) {
    // Tab must stop at the checked button of a group only: focus on another one would nearly select it.
    button->setFocusPolicy(chosen ? Qt::StrongFocus : Qt::ClickFocus);
    if (chosen) handler();
  });
  QObject::connect(button, &QRadioButton::pressed, button,
                   [button] { button->setProperty("chosenBefore", button->isChecked()); });
  QObject::connect(button, &QRadioButton::clicked, button, [button, handler] {
    if (button->property("chosenBefore").toBool()) handler();
  });
}
