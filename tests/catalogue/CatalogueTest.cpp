// SPDX-License-Identifier: MIT
#include "tests/catalogue/CatalogueTest.h"

#include "catalogue/Screens.h"
#include "data/forms/Screens.h"
#include "platform/controls/ListBox.h"
#include "platform/runtime/HostPath.h"

#include <QFile>
#include <QFileInfo>

#include <stdexcept>

using namespace Qt::StringLiterals;

CatalogueTest::CatalogueTest(Station::Mode mode) : station_(mode) {
  RegisterCatalogueScreens();
  const auto standIn = [this](const QString& name) {
    return [this, name](const QWidget* owner) {
      editorOwner_ = owner;
      visits_ += name + u' ' + global.gstrSelectedID;
      if (inTheEditor_) inTheEditor_();
    };
  };
  RegisterScreen(Screen::ItemsDetail, standIn(u"ItemsDetail"_s));
  RegisterScreen(Screen::ItemSpotsDetail, standIn(u"ItemSpotsDetail"_s));
  RegisterScreen(Screen::ItemPinglesDetail, standIn(u"ItemPinglesDetail"_s));
  RegisterScreen(Screen::OfflineLog, standIn(u"OfflineLog"_s));
}

CatalogueTest::~CatalogueTest() {
  for (const Screen screen :
       {Screen::ItemsDetail, Screen::ItemSpotsDetail, Screen::ItemPinglesDetail, Screen::OfflineLog})
    RegisterScreen(screen, {});
}

QString CatalogueTest::Table(const QString& things) {
  return (global.online ? u"tbl"_s : u"tblCopie_"_s) + things;
}

void CatalogueTest::AddItem(int id, const QString& naam, int aktief) {
  station_.OnCurrent(u"INSERT INTO %1 (ID, Naam, ItemSpotsOptID, Aktief, Locked) VALUES (%2, \"%3\", 1, %4, 0)"_s.arg(
      Table(u"Items"_s), QString::number(id), naam, QString::number(aktief)));
}

void CatalogueTest::AddSpot(const Spot& spot) {
  station_.OnCurrent(
      u"INSERT INTO %1 (ID, Path, Naam, LengteSec, StartDatum, StartUur, EindDatum, EindUur, AantalGedraaid, Aktief) "
      u"VALUES (%2, \"%3\", \"%4\", 32, 45658, 0, 73050, 23, 0, %5)"_s.arg(
          Table(u"ItemSpots"_s), QString::number(spot.id), spot.path, spot.naam, QString::number(spot.aktief)));
}

void CatalogueTest::AddPingle(int id, const QString& naam) {
  station_.OnCurrent(u"INSERT INTO %1 (ID, Naam, Aktief) VALUES (%2, \"%3\", 1)"_s.arg(Table(u"ItemPingles"_s),
                                                                                       QString::number(id), naam));
}

void CatalogueTest::Link(int itemID, int order, int spotID) {
  station_.OnCurrent(u"INSERT INTO %1 (ItemID, ItemSpotOrder, ItemSpotID) VALUES (%2, %3, %4)"_s.arg(
      Table(u"ItemsItemSpots"_s), QString::number(itemID), QString::number(order), QString::number(spotID)));
}

QString CatalogueTest::AudioFile(const QString& name) {
  const QString hostPath = station_.AudioFolder() + u'/' + name;
  QFile file(hostPath);
  if (!file.open(QIODevice::WriteOnly) || file.write("RIFF") != 4) throw std::runtime_error("cannot write a test file");
  return runtime::PathText(hostPath);
}

bool CatalogueTest::FileIsThere(const QString& pathText) {
  return QFileInfo::exists(runtime::HostPath(pathText));
}

controls::ListBox& CatalogueTest::List(const Form& form) {
  return Child<controls::ListBox>(form, u"lstOverzicht"_s);
}

QStringList CatalogueTest::Lines(const Form& form) {
  QStringList lines;
  for (int line = 0; line < List(form).ListCount(); ++line) {
    if (List(form).IsShown(line)) lines += List(form).Text(line);
  }
  return lines;
}

void CatalogueTest::Select(const Form& form, const QString& line) {
  for (int index = 0; index < List(form).ListCount(); ++index) {
    if (List(form).Text(index) != line) continue;
    List(form).SetListIndex(index);
    return;
  }
  ADD_FAILURE() << "no line " << line.toStdString();
}

bool CatalogueTest::Enabled(const Form& form, const QString& button) {
  return Child<QAbstractButton>(form, button).isEnabled();
}

void CatalogueTest::LoseDatabase() const {
  if (global.online) return station_.LoseServer();
  const QString path = station_.Folder() + u"/data/OvalistoLocal.mdb"_s;
  if (!QFile::rename(path, path + u".weg"_s)) throw std::runtime_error("cannot rename the local database");
}

void CatalogueTest::FindDatabase() const {
  if (global.online) return station_.FindServer();
  const QString path = station_.Folder() + u"/data/OvalistoLocal.mdb"_s;
  if (!QFile::rename(path + u".weg"_s, path)) throw std::runtime_error("cannot rename the local database");
}

QList<int> CatalogueTest::Numbers(dao::Recordset rows, const QString& field) {
  QList<int> numbers;
  for (; !rows.Eof(); rows.MoveNext())
    numbers += rows.Field(field).toInt();
  return numbers;
}

QList<int> CatalogueTest::IDs(const QString& things) const {
  return Numbers(station_.CurrentRows(u"SELECT ID FROM %1 ORDER BY ID"_s.arg(Table(things))), u"ID"_s);
}

QStringList CatalogueTest::Boxes() const {
  QStringList boxes;
  for (const desktop::ShownMessageBox& box : boxes_.Shown())
    boxes += box.title + u": "_s + box.text;
  return boxes;
}

QString CatalogueTest::OnlyError(const QString& title) const {
  if (boxes_.Shown().size() != 1) {
    ADD_FAILURE() << "boxes shown: " << Boxes().join(u" | "_s).toStdString();
    return {};
  }
  EXPECT_EQ(boxes_.Last().title, title);
  EXPECT_EQ(boxes_.Last().style, 16);
  return boxes_.Last().text;
}
