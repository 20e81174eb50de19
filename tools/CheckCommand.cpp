#include "platform/jet/Check.h"
#include "tools/Commands.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace {

int Check(const Arguments& arguments, const Streams& streams) {
  jet::OpenOptions options;
  options.password = arguments.Value(u"--password"_s).toStdU16String();
  const auto database = jet::Database::Open(QFile::encodeName(arguments.Plain().first()).toStdString(), options);
  const jet::ReadTurn reading(*database);
  const std::vector<jet::Finding> findings = jet::CheckDatabase(*database);
  for (const jet::Finding& finding : findings)
    streams.out << finding.Line() << '\n';
  if (jet::HasProblem(findings)) return kFailed;
  streams.out << "ok\n";
  return kDone;
}

}  // namespace

Command CheckCommand() {
  return {
      .name = u"check"_s,
      .usage = u"BESTAND [--password TEKST]"_s,
      .summary = u"Controleert een database en verandert niets: 'ok', of een regel per probleem."_s,
      .leastWords = 1,
      .mostWords = 1,
      .valuedOptions = {u"--password"_s},
      .run = Check,
      .details = u"Een regel met 'remark:' vooraan is vreemd, maar geen schade. Uitgang 1 zodra er een probleem is."_s,
      .examples = {u"check /srv/planner/server/OvalistoServer.mdb"_s}};
}
