// SPDX-License-Identifier: MIT
#include "data/UnreadableReason.h"

#include "data/Globals.h"
#include "platform/dao/postgres/ServerAddress.h"
#include "platform/runtime/Probe.h"

using namespace Qt::StringLiterals;
using runtime::Presence;

namespace {

QString BriefReason(const QString& databasePath) {
  if (dao::IsServerPath(databasePath)) return u"de databaseserver geeft een fout"_s;
  switch (runtime::Probe(databasePath)) {
    case Presence::There:
      return u"%1 is niet te lezen"_s;
    case Presence::NotThere:
      return u"%1 ontbreekt"_s;
    case Presence::NotReachable:
      return u"%1 is niet bereikbaar"_s;
    case Presence::Denied:
      break;
  }
  return u"geen toegang tot %1"_s;
}

}  // namespace

UnreadableReason ReasonFor(const QString& databasePath, const QString& whose, const QString& description) {
  QString brief = BriefReason(databasePath);
  return {brief.replace(u"%1"_s, whose), description};
}

QString CatalogueWords() {
  return global.online ? u"de gedeelde database"_s : u"de lokale kopie"_s;
}
