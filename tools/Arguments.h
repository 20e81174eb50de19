// SPDX-License-Identifier: MIT
#pragma once

#include "platform/runtime/Error.h"
#include "tools/Usage.h"

#include <QMap>
#include <QString>
#include <QStringList>

#include <optional>

// The words behind a command do not fit it: the caller's mistake, not the world's.
class UseError : public runtime::Error {
 public:
  using runtime::Error::Error;
};

// The words behind a command: plain ones in their order, and options, with a value ("--station 3") or without.
class Arguments {
 public:
  // UseError for an option that the usage does not name, a missing value, and an empty plain word, which would stand
  // for the folder one happens to be in.
  Arguments(const QStringList& words, const Usage& usage);

  const QStringList& Plain() const { return plain_; }
  bool Has(const QString& option) const { return options_.contains(option); }
  QString Value(const QString& option) const { return options_.value(option); }
  // The value as a whole number from 0 to `most`; nothing when the option is not given. UseError for any other value.
  std::optional<int> Number(const QString& option, int most) const;
  // The number of the station that --station names; 0, no number, when it is not given. UseError for any other value.
  qint16 Station() const;

 private:
  QStringList plain_;
  QMap<QString, QString> options_;
};
