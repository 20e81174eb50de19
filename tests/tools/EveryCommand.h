// SPDX-License-Identifier: MIT
#pragma once

#include "tools/Commands.h"

#include <QHash>
#include <QStringList>

#include <stdexcept>

// What the calls of EveryCommand are about. All in the folder of a station, where nothing needs to exist.
struct CallTarget {
  QString folder;
  QString database;
  QString table;
};

// The words of one call of each command, for tests that must hold for all of them. A new command needs a call here:
// without one, the tests fail.
inline QList<QStringList> EveryCommand(const CallTarget& target) {
  using namespace Qt::StringLiterals;
  const auto in = [&](const QString& name) -> QString { return target.folder + u'/' + name; };
  const QHash<QString, QStringList> arguments{
      {u"create"_s, {target.folder}},
      {u"demo"_s, {target.folder}},
      {u"tables"_s, {target.database}},
      {u"schema"_s, {target.database}},
      {u"dump"_s, {target.database, target.table}},
      {u"sql"_s, {target.database, u"SELECT * FROM "_s + target.table}},
      {u"measure"_s, {in(u"spot.wav"_s)}},
      {u"check"_s, {target.database}},
      {u"compact"_s, {target.database, u"--zonder-reservekopie"_s}},
      {u"restore"_s, {in(u"kopie.mdb"_s), target.database, u"tblCopie_Items"_s, u"--zonder-reservekopie"_s}},
      {u"copy"_s, {target.database, in(u"kopie.mdb"_s)}},
      {u"export"_s, {target.folder}},
      {u"apply"_s, {target.database, in(u"20250311143207.tql"_s), u"--from"_s, u"A"_s}},
      {u"conflicts"_s, {target.database}},
      {u"spots"_s, {target.folder}},
      {u"locate"_s, {target.folder, target.folder}},
      {u"playout"_s, {target.folder, u"--form"_s, u"m3u"_s, u"--to"_s, target.folder}},
      {u"played"_s, {target.database, in(u"uitzendlog.txt"_s)}}};
  QList<QStringList> calls;
  for (const Command& command : AllCommands()) {
    if (!arguments.contains(command.name))
      throw std::logic_error("EveryCommand.h has no call of " + command.name.toStdString());
    calls += QStringList(command.name) + arguments.value(command.name);
  }
  return calls;
}
