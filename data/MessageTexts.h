// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QString>

// One row of table appMessages as created in a new local database.
struct MessageText {
  int number;
  QString text;   // with the placeholders %1 %2 %3 and %LF (line break)
  QString style;  // one letter for icon and buttons: see StyleOf in Messages.cpp
};

QList<MessageText> MessageTexts();
