// SPDX-License-Identifier: MIT
#include "tools/LocalFolder.h"

#include "data/Backup.h"
#include "data/OfflineBasis.h"
#include "platform/runtime/Error.h"
#include "tools/DatabaseArgument.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

// A file that does not exist yet has no real path.
QString RealPath(const QString& path) {
  const QString real = QFileInfo(path).canonicalFilePath();
  return real.isEmpty() ? QFileInfo(path).absoluteFilePath() : real;
}

}  // namespace

bool IsOfflineLog(const dao::Database& database, const QString& table) {
  const QString name = database.Table(table).name;
  return name.compare(u"tblOfflineLog"_s, Qt::CaseInsensitive) == 0 ||
         name.compare(basis::OfflineTableName(), Qt::CaseInsensitive) == 0;
}

LocalFolder::LocalFolder(const QString& databasePath)
    : databasePath_(RealPath(databasePath)), folder_(QFileInfo(databasePath_).absolutePath()) {}

bool LocalFolder::IsLocal() const {
  return QFileInfo(databasePath_).fileName().startsWith(u"OvalistoLocal"_s, Qt::CaseInsensitive);
}

std::unique_ptr<ProgramLock> LocalFolder::Lock() const {
  return IsLocal() ? std::make_unique<ProgramLock>(folder_) : nullptr;
}

void LocalFolder::BackUp(const Arguments& arguments, const QString& keep) const {
  // The program folder is the parent of "data".
  if (arguments.Has(kWithoutBackup) || !BackupsEnabled(QFileInfo(folder_).absolutePath() + u"/ovalis.ini"_s)) return;
  try {
    ::BackUp(databasePath_, arguments.Value(kPassword), keep);
  } catch (const runtime::Error& error) {
    throw runtime::Error(
        u"Er kon vooraf geen reservekopie van '%1' gemaakt worden, dus is er niets veranderd.\n%2\n"
        u"Met %3 gebeurt het zonder reservekopie."_s.arg(databasePath_, error.Description(), kWithoutBackup));
  }
}
