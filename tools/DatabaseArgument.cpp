// SPDX-License-Identifier: MIT
#include "tools/DatabaseArgument.h"

#include "platform/dao/postgres/ServerAddress.h"
#include "platform/jet/database/Database.h"
#include "platform/runtime/Error.h"

#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

QString DatabasePathOf(const QString& word) {
  return dao::IsServerPath(word) ? word : QFileInfo(word).absoluteFilePath();
}

void RefuseServer(const QString& word, const QString& instead) {
  if (!dao::IsServerPath(word)) return;
  dao::RefusePassword(word);
  throw runtime::Error(
      u"'%1' is een databaseserver; deze opdracht is er voor bestanden. Gebruik %2."_s.arg(word, instead));
}

dao::Database OpenDatabase(const Arguments& arguments, Purpose purpose) {
  const QString& word = arguments.Plain().first();
  if (dao::IsServerPath(word) && arguments.Has(kPassword)) {
    throw UseError(u"Een wachtwoord van een databaseserver hoort in ~/.pgpass, niet bij %1."_s.arg(kPassword));
  }
  return dao::OpenDatabase(DatabasePathOf(word), {arguments.Value(kPassword), purpose == Purpose::Read});
}

std::unique_ptr<jet::Database> OpenFile(const Arguments& arguments, std::size_t cachedPages) {
  jet::OpenOptions options;
  options.cachedPages = cachedPages;
  options.password = arguments.Value(kPassword).toStdU16String();
  return jet::Database::Open(QFile::encodeName(arguments.Plain().first()).toStdString(), options);
}
