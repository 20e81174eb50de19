#include "platform/jet/Compact.h"
#include "tools/Commands.h"
#include "tools/LocalFolder.h"

#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

std::filesystem::path HostFile(const QString& name) {
  return QFile::encodeName(name).toStdString();
}

int Compact(const Arguments& arguments, const Streams& streams) {
  const QString source = arguments.Plain().first();
  const QString target = arguments.Plain().last();
  const qint64 before = QFileInfo(source).size();
  jet::OpenOptions options;
  options.password = arguments.Value(u"--password"_s).toStdU16String();
  if (arguments.Plain().size() == 1) {
    options.writable = true;
    LocalFolder(QFileInfo(source).absoluteFilePath()).BackUp(arguments.Value(u"--password"_s));
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
      .usage = u"BESTAND [NIEUW] [--password TEKST]"_s,
      .summary = u"Herschrijft een database zonder lege ruimte; de oude blijft als .bak, of de nieuwe komt ernaast."_s,
      .leastWords = 1,
      .mostWords = 2,
      .valuedOptions = {u"--password"_s},
      .run = Compact,
      .examples = {u"compact /srv/planner/server/OvalistoServer.mdb"_s, u"compact OvalistoServer.mdb kleiner.mdb"_s}};
}
