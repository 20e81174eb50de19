// SPDX-License-Identifier: MIT
#include "tests/export/apply/Shared.h"

#include "data/Schema.h"
#include "platform/runtime/Error.h"
#include "tests/support/Cluster.h"

#include <QDir>

using namespace Qt::StringLiterals;

namespace {
int nextServer = 0;
}

SharedStation::SharedStation() {
  server_ = testing_support::OnServer() ? testing_support::ServerPath(u"apply%1"_s.arg(++nextServer))
                                        : folder_.filePath(u"OvalistoServer.mdb"_s);
  schema::CreateServerDatabase(server_);
}

void SharedStation::Fill() {
  for (const auto& [id, naam] : {std::pair(1, u"Bakker"_s), std::pair(2, u"Slager"_s), std::pair(3, u"Kapper"_s)}) {
    OnServer(
        u"INSERT INTO tblItemSpots (ID, Path, Naam, LengteSec, StartDatum, EindDatum, AantalGedraaid, Aktief) "
        "VALUES (%1, \"D:\\audio\\%2.wav\", \"%2\", 30, 45658, 45700, 5, 1)"_s.arg(QString::number(id), naam));
  }
  for (const int id : {1, 2}) {
    OnServer(
        u"INSERT INTO tblItemPingles (ID, Naam, Path, Aktief) VALUES (%1, \"Jingle %1\", \"D:\\j%1.wav\", 1)"_s.arg(
            QString::number(id)));
  }
  OnServer(
      u"INSERT INTO tblItems (ID, Naam, ItemSpotsOptID, OptMeerdereSpots, AantalSpots, MaxAantalSpots, "
      "ChkRandomizeMeerdereSpots, Opener, Aktief, Locked) VALUES (1, \"Ochtend\", 1, 0, 0, 0, 0, 1, 1, 0)"_s);
  OnServer(u"INSERT INTO tblItemsItemSpots (ItemID, ItemSpotOrder, ItemSpotID) VALUES (1, 1, 1)"_s);
  OnServer(u"INSERT INTO tblItemsItemSpots (ItemID, ItemSpotOrder, ItemSpotID) VALUES (1, 2, 2)"_s);
}

QString SharedStation::Folder(const QString& name) const {
  QDir(folder_.path()).mkpath(name);
  return folder_.filePath(name);
}

Workstation SharedStation::At(const QString& name) const {
  Workstation workstation(name, Folder(name));
  workstation.Refresh(server_);
  return workstation;
}

apply::Result SharedStation::Process(const QString& path, const QString& source, bool outOfOrder) const {
  return apply::CarryOut(server_, apply::ReadExport(path), {source, u"test"_s, outOfOrder, {}});
}

QString SharedStation::ErrorOf(const QString& path, const QString& source) const {
  try {
    Process(path, source);
  } catch (const runtime::Error& error) {
    return error.Description();
  }
  return {};
}

QStringList SharedStation::Rows(const QString& select) const {
  dao::Recordset rows = dao::OpenDatabase(server_).OpenRecordset(select);
  QStringList lines;
  for (; !rows.Eof(); rows.MoveNext()) {
    QStringList fields;
    for (int i = 0; i < rows.FieldNames().size(); ++i)
      fields += rows.Field(i).isValid() ? rows.Field(i).toString() : u"-"_s;
    lines += fields.join(u'|');
  }
  return lines;
}

int SharedStation::OnServer(const QString& statement) const {
  return dao::OpenDatabase(server_).Execute(statement);
}

ItemSpotRow NewSpot(qint32 id, const QString& naam) {
  ItemSpotRow row;
  row.id = id;
  row.path = u"D:\\audio\\"_s + naam + u".wav";
  row.naam = naam;
  row.lengteSec = 20;
  row.startPunt = 0;
  row.startDatum = 45660;
  row.eindDatum = 45690;
  row.aktief = 1;
  return row;
}

QStringList Texts(const apply::Result& result, apply::What what) {
  QStringList texts;
  for (const apply::ReportLine& line : result.lines) {
    if (line.what == what) texts += line.text;
  }
  return texts;
}
