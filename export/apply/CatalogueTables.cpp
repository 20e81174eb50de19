// SPDX-License-Identifier: MIT
#include "export/apply/CatalogueTables.h"

#include "data/Catalogue.h"
#include "data/Schema.h"

#include <array>

using namespace Qt::StringLiterals;

namespace apply {
namespace {

struct Names {
  QString server;
  QString word;
  QStringList fields;
};

std::array<Names, 4> MakeNames() {
  std::array<Names, 4> names{{{u"tblItems"_s, u"item"_s, {}},
                              {u"tblItemSpots"_s, u"item-spot"_s, {}},
                              {u"tblItemPingles"_s, u"jingle"_s, {}},
                              {u"tblItemsItemSpots"_s, u"spotlijst van item"_s, {}}}};
  for (const dao::TableDef& table : schema::ServerTables()) {
    for (Names& one : names) {
      if (one.server != table.name) continue;
      for (const dao::FieldDef& field : table.fields)
        one.fields += field.name;
    }
  }
  return names;
}

const Names& Of(Table table) {
  static const std::array<Names, 4> kNames = MakeNames();
  return kNames[static_cast<std::size_t>(table)];
}

}  // namespace

QString NameOf(Table table) {
  return Of(table).server;
}
QString CopyNameOf(Table table) {
  return CopyTableOf(Of(table).server);
}
QString WordFor(Table table) {
  return Of(table).word;
}
const QStringList& FieldNamesOf(Table table) {
  return Of(table).fields;
}

bool IsPlayCount(const QString& field) {
  return field.compare(u"AantalGedraaid"_s, Qt::CaseInsensitive) == 0 ||
         field.compare(u"LaatstGedraaid"_s, Qt::CaseInsensitive) == 0;
}

}  // namespace apply
