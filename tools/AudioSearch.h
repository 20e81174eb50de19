// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

#include <optional>

// Searches folders for sound files that have moved. A file matches when it has the same name (ignoring letter case) and
// the same length.
class AudioSearch {
 public:
  enum class Outcome { Found, Several, OtherLength, NotFound };
  struct Answer {
    Outcome outcome = Outcome::NotFound;
    QString path;  // host path, when found
  };

  // Walks the host folders once; links are not followed. Throws runtime::Error for a folder that does not exist.
  explicit AudioSearch(const QStringList& folders);

  // `lengteSec` as in the catalogue: whole seconds, hours left out. A difference of one second is rounding. An unknown
  // length matches no file.
  Answer Find(const QString& fileName, std::optional<qint32> lengteSec) const;

 private:
  QHash<QString, QStringList> byName_;  // host paths by name in lower case
};
