// SPDX-License-Identifier: MIT
#include "data/stations/ProgramFolder.h"

#include "data/Schema.h"
#include "platform/dao/Database.h"
#include "platform/files/TemporaryName.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/FileCalls.h"
#include "platform/runtime/TextFile.h"

#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

constexpr char kSettings[] =
    "; Instellingen van Spotrooster\r\n"
    "[Files]\r\n"
    "DatabasePath=D:\\server\r\n"
    "ExportPath=D:\\export\r\n"
    "\r\n"
    "[Audio Players]\r\n"
    "; -1 = het gewone geluidsapparaat van deze computer\r\n"
    "Card=-1\r\n"
    "Buffers=20\r\n"
    "Buffer_Size=2048\r\n"
    "Callback=0\r\n"
    "\r\n"
    "[Drives]\r\n"
    "; schijven en netwerkmappen zoals Windows ze noemt, en de mappen van deze computer die ervoor staan\r\n"
    "D=.\r\n"
    "Z=/\r\n";

QString Numbered(const QString& name, qint16 number) {
  return name + (number == 0 ? QString() : QString::number(number)) + u".mdb";
}

bool HasStation(const QString& localDatabase, qint16 number) {
  dao::Database database = dao::OpenDatabase(localDatabase, {.readOnly = true});
  return !database
              .OpenRecordset(u"SELECT LicentieNummer FROM cdeLicenties WHERE LicentieNummer = "_s +
                             QString::number(number))
              .Eof();
}

}  // namespace

ProgramFolder::ProgramFolder(const QString& hostPath) : path_(QFileInfo(hostPath).absoluteFilePath()) {
  for (const QString& name : {u"data"_s, u"server"_s, u"export"_s})
    runtime::MakeFolders(path_ + u'/' + name);
  const QString settings = path_ + u"/ovalis.ini";
  if (!QFile::exists(settings)) runtime::WriteFile(settings, kSettings);
}

QString ProgramFolder::LocalDatabase(qint16 number) const {
  return path_ + u"/data/" + Numbered(u"OvalistoLocal"_s, number);
}

QString ProgramFolder::ServerDatabase(qint16 number) const {
  return path_ + u"/server/" + Numbered(u"OvalistoServer"_s, number);
}

bool ProgramFolder::HasCompleteStation(qint16 number) const {
  return QFile::exists(LocalDatabase(number)) && QFile::exists(LocalDatabase(0)) &&
         HasStation(LocalDatabase(0), number);
}

void ProgramFolder::MakeStation(qint16 number, const QString& name) const {
  if (HasCompleteStation(number))
    throw runtime::Error(u"De zender %1 is er al: '%2'."_s.arg(QString::number(number), LocalDatabase(number)));
  const auto createIfMissing = [](const QString& path, const auto& create) {
    // A killed program may have left its temporary file although the file itself is there.
    files::RemoveLeftovers(runtime::NativePath(path));
    if (!QFile::exists(path)) create(path);
  };
  const auto createLocal = [&](const QString& path) {
    schema::CreateLocalDatabase(path, [&](dao::Database& local) { schema::AddStation(local, number, name); });
  };
  createIfMissing(ServerDatabase(number), schema::CreateServerDatabase);
  createIfMissing(path_ + u"/data/work.mdb", schema::CreateWorkDatabase);
  createIfMissing(LocalDatabase(number), createLocal);
  // The list of stations is read before one is chosen, from the database without a number. The row there is added
  // last: a station that has it is complete.
  createIfMissing(LocalDatabase(0), createLocal);
  if (!HasStation(LocalDatabase(0), number)) schema::AddStation(LocalDatabase(0), number, name);
}
