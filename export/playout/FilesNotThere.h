// SPDX-License-Identifier: MIT
#pragma once

#include "data/Catalogue.h"

#include <QDateTime>
#include <QString>

#include <vector>

// A record whose audio file is not there.
struct FileNotThere {
  enum class Record { ItemSpot, ItemPingle, Item };

  Record record = Record::ItemSpot;
  qint32 id = 0;
  QString naam;
  QString path;  // path text; empty: the record has none
  bool aktief = true;
};

// The item-spots and jingles without their file, and the items filled by file name whose file of `moment` is not there;
// active ones first, then by name. A file on a drive that does not answer is not in it, but counted in `notReachable`.
// Waits for drives: for background threads. Throws runtime::Error when the catalogue cannot be read.
struct FilesNotThere {
  std::vector<FileNotThere> files;
  int notReachable = 0;
};
FilesNotThere FindFilesNotThere(const Catalogue& catalogue, const QDateTime& moment);
