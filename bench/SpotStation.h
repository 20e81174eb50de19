// SPDX-License-Identifier: MIT
#pragma once

#include "platform/controls/ListBox.h"

#include <QString>
#include <QTemporaryDir>

#include <vector>

namespace bench {

// A station in a temporary folder (on the disk of `place`, a host path, if given), with that many active item-spots in
// its server database; `global` is set for it, online. The names are of five kinds of shop, each with a number.
class SpotStation {
 public:
  explicit SpotStation(int rows, const QString& place = {});

  QString Folder() const { return folder_.path(); }
  QString File(const QString& name) const { return folder_.filePath(name); }
  // Name and ID of each spot, by ID.
  const std::vector<controls::ListBox::Line>& Spots() const { return spots_; }

 private:
  void FillServer() const;

  QTemporaryDir folder_;
  std::vector<controls::ListBox::Line> spots_;
};

}  // namespace bench
