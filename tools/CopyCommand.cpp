// SPDX-License-Identifier: MIT
#include "platform/dao/CopyDatabase.h"
#include "platform/runtime/Error.h"
#include "tools/Commands.h"
#include "tools/DatabaseArgument.h"
#include "tools/LocalFolder.h"

using namespace Qt::StringLiterals;

namespace {

const QString kRefresh = u"--refresh"_s;

// Statements of an offline log must neither be lost nor copied twice.
void RefuseLocal(const QString& path) {
  if (!LocalFolder(path).IsLocal()) return;
  throw runtime::Error(
      u"'%1' is een lokale database. Die wordt niet gekopieerd: haar offline-logboek zou verloren gaan of dubbel "
      "komen."_s.arg(path));
}

int Copy(const Arguments& arguments, const Streams& streams) {
  const QString source = DatabasePathOf(arguments.Plain().at(0));
  const QString target = DatabasePathOf(arguments.Plain().at(1));
  RefuseLocal(target);
  const auto mode = arguments.Has(kRefresh) ? dao::CopyMode::Refresh : dao::CopyMode::Fill;
  for (const dao::CopiedTable& table : dao::CopyDatabase(source, target, mode)) {
    streams.out << table.name.toStdString() << '\t' << table.rows << "\t+" << table.inserted << "\t-" << table.deleted
                << '\n';
  }
  return kDone;
}

}  // namespace

Command CopyCommand() {
  return {
      .name = u"copy"_s,
      .usage = u"BRON DOEL [--refresh]"_s,
      .summary = u"Kopieert alle tabellen van een database naar een andere, bestand of databaseserver."_s,
      .run = Copy,
      .details =
          u"Wat er in het doel nog niet is, wordt gemaakt. Alles gaat in één keer: aantallen en controlesommen worden\n"
          "vergeleken voor het doel iets bewaart. Toont per tabel het aantal rijen, en hoeveel er bijkwamen en\n"
          "verdwenen. Een tabel die in het doel al rijen heeft, is een fout; met --refresh worden haar rijen gelijk\n"
          "aan die van de bron, en verandert alleen wat verschilt."_s,
      .examples = {u"copy /tmp/proef/server/OvalistoServer.mdb /tmp/proef/spiegel.mdb"_s,
                   u"copy /tmp/proef/server/OvalistoServer.mdb /tmp/proef/spiegel.mdb --refresh"_s}};
}
