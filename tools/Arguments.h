#pragma once
#include <QMap>
#include <QString>
#include <QStringList>

// The words behind a command: plain ones in their order, and options with a value ("--station 3").
class Arguments {
 public:
  // `valued` names the options that take a value, `flags` those that take none. runtime::Error for any other option and
  // for a missing value.
  Arguments(const QStringList& words, const QStringList& valued, const QStringList& flags = {});

  const QStringList& Plain() const { return plain_; }
  bool Has(const QString& option) const { return options_.contains(option); }
  QString Value(const QString& option) const { return options_.value(option); }

 private:
  QStringList plain_;
  QMap<QString, QString> options_;
};
