// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

#include <vector>

// An overview as it goes to paper, to a PDF or to a table of figures: columns, and lines in groups.
struct Report {
  struct Column {
    QString title;
    int share = 0;  // of the page's width; 0: only in the table of figures
    bool right = false;
  };
  struct Group {
    QString name;  // empty: the lines stand for themselves
    QString note;
    std::vector<QStringList> lines;  // a text for each column
    bool continued = false;          // began on an earlier page
  };

  QString title;
  QString subtitle;    // station, mode and day
  QString groupTitle;  // what a group is; empty when there is only one, without a name
  std::vector<Column> columns;
  std::vector<Group> groups;
  QString closing;    // the sum below it all
  QString emptyText;  // in place of lines when there are none
  QStringList files;  // audio files on which the states in it depend; path texts, perhaps some twice

  bool IsEmpty() const { return groups.empty(); }
};
