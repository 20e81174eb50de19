// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

#include <vector>

// An overview for paper, PDF or CSV: columns, and lines in groups.
struct Report {
  struct Column {
    QString title;
    int share = 0;  // of the page's width, relative to the other columns; 0: only in CSV
    bool right = false;
  };
  struct Group {
    QString name;  // empty: no heading
    QString note;
    std::vector<QStringList> lines;  // one text per column
    bool continued = false;          // started on an earlier page
  };

  QString title;
  QString subtitle;    // station, mode and day
  QString groupTitle;  // column title of the groups in CSV; empty for a single group without a name
  std::vector<Column> columns;
  std::vector<Group> groups;
  QString closing;    // totals below the lines
  QString emptyText;  // shown when there are no lines
  QStringList files;  // audio files that the shown states depend on; path texts, may contain duplicates

  bool IsEmpty() const { return groups.empty(); }
};
