// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QtGlobal>

namespace controls {

// The mark before a line's text: a shape and the tone it is painted in.
enum class LineMark : quint8 { None, Circle, Clock, Triangle, Square, Dash, Cross };
enum class LineTone : quint8 { Quiet, Runs, Begins, Ends, Wrong };

// What a list shows beside a line's text. It never takes part in Text() or in a search.
struct LineDetails {
  LineMark mark = LineMark::None;
  LineTone tone = LineTone::Quiet;  // of the mark, and of the word where wordInTone is set
  bool wordInTone = false;
  bool quietText = false;  // the text itself in the quiet colour
  QString word;            // second column
  QString trailing;        // last column, right-aligned
  QString toolTip;
};

}  // namespace controls
