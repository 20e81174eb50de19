// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QtGlobal>

namespace controls {

// The mark before a line's text: its shape and its colour.
enum class LineMark : quint8 { None, Circle, Clock, Triangle, Square, Dash, Cross };
enum class LineTone : quint8 { Quiet, Runs, Begins, Ends, Wrong };

// What a list shows in addition to a line's text. Not part of Text() and of searches.
struct LineDetails {
  LineMark mark = LineMark::None;
  LineTone tone = LineTone::Quiet;  // colour of the mark, and of the word if wordInTone is set
  bool wordInTone = false;
  bool quietText = false;  // paints the text in the hint colour
  QString word;            // second column
  QString trailing;        // last column, right-aligned
  QString toolTip;
};

}  // namespace controls
