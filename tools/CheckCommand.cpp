// SPDX-License-Identifier: MIT
#include "platform/jet/check/Check.h"
#include "platform/jet/database/Database.h"
#include "tools/Commands.h"
#include "tools/DatabaseArgument.h"

#include <vector>

using namespace Qt::StringLiterals;

namespace {

int Check(const Arguments& arguments, const Streams& streams) {
  RefuseServer(arguments.Plain().first(), u"pg_amcheck, dat de tabellen en indexen van een server controleert"_s);
  const auto database = OpenFile(arguments);
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
  return {.name = u"check"_s,
          .usage = u"BESTAND [--password TEKST]"_s,
          .summary = u"Controleert een database en verandert niets: 'ok', of een regel per probleem."_s,
          .run = Check,
          .details =
              u"Een regel met 'opmerking:' vooraan is vreemd, maar geen schade. Exitcode 1 zodra er een probleem is."_s,
          .examples = {u"check /tmp/proef/server/OvalistoServer.mdb"_s}};
}
