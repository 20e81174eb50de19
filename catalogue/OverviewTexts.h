// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

// The texts below and inside an overview list, from what it shows.
struct OverviewView {
  QString one;       // "item-spot"
  QString many;      // "item-spots"
  bool read = true;  // the list could be read
  int all = 0;       // lines in the list
  int shown = 0;     // those that the search leaves
  QString search;
  bool hasBoxes = false;  // there are check boxes for the active and the inactive ones
  bool aktieve = true;
  bool nietAktieve = false;
};

// "21 item-spots", or "3 van 21 item-spots" when lines are hidden.
QString CountTextOf(const OverviewView& view);

// What a list without a visible line says: what is so, and what to do.
QString EmptyTextOf(const OverviewView& view);
