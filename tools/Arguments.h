// SPDX-License-Identifier: MIT
#pragma once

#include "platform/runtime/Error.h"
#include "tools/Usage.h"

#include <QMap>
#include <QString>
#include <QStringList>

#include <optional>

// The words after a command do not fit it: a mistake of the caller, reported with the usage.
class UseError : public runtime::Error {
 public:
  using runtime::Error::Error;
};

// The words after a command: plain ones in their order, and options with a value ("--station 3") or without.
class Arguments {
 public:
  // Throws UseError for an option that is not in the usage, a missing value, and an empty plain word: an empty path
  // would mean the current folder.
  Arguments(const QStringList& words, const Usage& usage);

  const QStringList& Plain() const { return plain_; }
  bool Has(const QString& option) const { return options_.contains(option); }
  QString Value(const QString& option) const { return options_.value(option); }
  // The value as a whole number from 0 to `most`; nothing when the option is not given. Throws UseError for any other
  // value.
  std::optional<int> Number(const QString& option, int most) const;
  // The number of --station; 0, no number, when it is not given. Throws UseError for any other value.
  qint16 Station() const;

 private:
  QStringList plain_;
  QMap<QString, QString> options_;
};
