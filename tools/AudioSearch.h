// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

#include <optional>

// Looks below folders for sound files that have moved. A file is the one that was lost when its name is the same
// (without regard to letter case) and its length too.
class AudioSearch {
 public:
  enum class Outcome { Found, Several, OtherLength, NotFound };
  struct Answer {
    Outcome outcome = Outcome::NotFound;
    QString path;  // host path, when found
  };

  // Walks the host folders once; links are not followed. runtime::Error for a folder that is not there.
  explicit AudioSearch(const QStringList& folders);

  // `lengteSec` as the catalogue has it: whole seconds, hours left out. A difference of one second is a matter of
  // rounding. A length that is not known fits no file.
  Answer Find(const QString& fileName, std::optional<qint32> lengteSec) const;

 private:
  QHash<QString, QStringList> byName_;  // host paths by name in lower case
};
