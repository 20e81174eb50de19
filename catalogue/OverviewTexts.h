// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

// The state of an overview list, for the texts below and inside it.
struct OverviewView {
  QString one;       // "item-spot"
  QString many;      // "item-spots"
  bool read = true;  // the list was read
  int all = 0;       // lines in the list
  int shown = 0;     // lines that the search does not hide
  QString search;
  bool hasBoxes = false;  // has check boxes for active and inactive records
  bool aktieve = true;
  bool nietAktieve = false;
};

// "1.021 item-spots", or "3 van 1.021 item-spots" when lines are hidden.
QString CountTextOf(const OverviewView& view);

// The text inside a list without visible lines: the reason, and what the user can do.
QString EmptyTextOf(const OverviewView& view);
