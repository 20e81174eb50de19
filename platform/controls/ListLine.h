// SPDX-License-Identifier: MIT
#pragma once

#include <QRect>
#include <QString>
#include <QtGlobal>

#include <array>

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
  QString date = {};      // third column
  QString searched = {};  // not shown; a search finds it too
};

// The columns of a line, from the left.
enum class LineColumn : quint8 { Text, Word, Date, Trailing };
inline constexpr LineColumn kLineColumns[] = {LineColumn::Text, LineColumn::Word, LineColumn::Date,
                                              LineColumn::Trailing};
// A text for each column.
using ColumnTexts = std::array<QString, 4>;

// Where the parts of a line are painted; empty for a part without room or content.
struct LineColumns {
  QRect number, mark, text, word, date, trailing;

  const QRect& Place(LineColumn column) const {
    switch (column) {
      case LineColumn::Word:
        return word;
      case LineColumn::Date:
        return date;
      case LineColumn::Trailing:
        return trailing;
      case LineColumn::Text:
        break;
    }
    return text;
  }
};

}  // namespace controls
