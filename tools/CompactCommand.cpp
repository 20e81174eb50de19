// SPDX-License-Identifier: MIT
#include "platform/jet/check/Compact.h"
#include "tools/Commands.h"
#include "tools/DatabaseArgument.h"
#include "tools/LocalFolder.h"

#include <QFile>
#include <QFileInfo>

#include <filesystem>

using namespace Qt::StringLiterals;

namespace {

std::filesystem::path HostFile(const QString& name) {
  return QFile::encodeName(name).toStdString();
}

int Compact(const Arguments& arguments, const Streams& streams) {
  for (const QString& word : arguments.Plain())
    RefuseServer(word, u"vacuumdb, dat een database op een server opruimt"_s);
  const QString source = arguments.Plain().first();
  const QString password = arguments.Value(kPassword);
  const QString target = arguments.Plain().last();
  const qint64 before = QFileInfo(source).size();
  jet::OpenOptions options;
  options.password = password.toStdU16String();
  if (arguments.Plain().size() == 1) {
    options.writable = true;
    LocalFolder(QFileInfo(source).absoluteFilePath()).BackUp(arguments);
    jet::Compact(HostFile(source), options);
  } else {
    jet::CompactInto(HostFile(source), HostFile(target), options);
  }
  streams.out << before << " -> " << QFileInfo(target).size() << '\n';
  return kDone;
}

}  // namespace

Command CompactCommand() {
  return {
      .name = u"compact"_s,
      .usage = u"BESTAND [NIEUW] [--zonder-reservekopie] [--password TEKST]"_s,
      .summary = u"Herschrijft een database zonder lege ruimte; de oude blijft als .bak, of de nieuwe komt ernaast."_s,
      .run = Compact,
      .details = u"Kan er vooraf geen reservekopie komen, dan gebeurt er niets, tenzij met --zonder-reservekopie."_s,
      .examples = {u"compact /tmp/proef/data/OvalistoLocal.mdb"_s,
                   u"compact /tmp/proef/server/OvalistoServer.mdb /tmp/proef/kleiner.mdb"_s}};
}
