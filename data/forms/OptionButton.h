// SPDX-License-Identifier: MIT
#pragma once

#include <QRadioButton>

#include <functional>

// Runs the handler of an option button as its users know it: when the button becomes chosen, by hand or by program, and
// on a user's click on the one already chosen; never for the one that is switched off.
inline void OnOptionClick(QRadioButton* button, const std::function<void()>& handler) {
  QObject::connect(button, &QRadioButton::toggled, button, [button, handler](bool chosen) {
    // Tab goes to the chosen one of a group: landing on another would be a step from choosing it.
    button->setFocusPolicy(chosen ? Qt::StrongFocus : Qt::ClickFocus);
    if (chosen) handler();
  });
  QObject::connect(button, &QRadioButton::pressed, button,
                   [button] { button->setProperty("chosenBefore", button->isChecked()); });
  QObject::connect(button, &QRadioButton::clicked, button, [button, handler] {
    if (button->property("chosenBefore").toBool()) handler();
  });
}
