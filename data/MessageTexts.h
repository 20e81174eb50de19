// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QString>

// A row of the message catalogue as a new local database gets it.
struct MessageText {
  int number;
  QString text;   // with the placeholders %1 %2 %3 and %LF
  QString style;  // one letter: icon and buttons
};

QList<MessageText> MessageTexts();
